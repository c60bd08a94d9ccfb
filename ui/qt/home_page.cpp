#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

#include "ui/qt/bindings.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

void add_links(HomePanel& home, Page* page) {
  auto* links = new QVBoxLayout;
  links->setSpacing(2);
  links->setContentsMargins(0, 0, 0, 0);
  for (Label* link : {&home.Label3, &home.Label4, &home.Label5, &home.Label51, &home.Label63})
    links->addWidget(make_link(*link, page->body()));
  page->rows()->addLayout(links);
}

void add_box(CheckBox& control, QVBoxLayout* rows, QWidget* frame) {
  auto* box = new QCheckBox(frame);
  bind(control, box);
  rows->addWidget(box);
}

// Today's sun times; no empty line before there are any.
void add_sun_times(Label& control, QVBoxLayout* rows, QWidget* frame) {
  auto* times = new QLabel(frame);
  times->setWordWrap(true);
  bind(control, times);
  rows->addWidget(times);
  follow(control.caption, times, [times, &control](const std::string& text) {
    times->setVisible(control.visible && !text.empty());
  });
}

void add_settings(OptionsPanel& options, Page* page) {
  auto* frame = new QWidget(page->body());
  bind_common(options.Frame1, frame, tr("Location and start-up settings"));
  auto* rows = new QVBoxLayout(frame);
  rows->setContentsMargins(0, Page::kHeadingGap, 0, 0);
  rows->setSpacing(10);
  rows->addWidget(make_heading(tr("Location"), frame));
  add_sun_times(options.lab_sunset, rows, frame);
  auto* city = new QHBoxLayout;
  city->setSpacing(18);
  city->addWidget(new QLabel(tr("City:"), frame));
  city->addWidget(make_combo(options.com_city, tr("City"), frame), 1);
  rows->addLayout(city);
  add_box(options.Check1, rows, frame);
  rows->addSpacing(Page::kHeadingGap);
  rows->addWidget(make_heading(tr("Start-up"), frame));
  for (CheckBox* box : {&options.chk_lww, &options.chk_service, &options.chk_startup})
    add_box(*box, rows, frame);
  page->rows()->addWidget(frame);
}

}  // namespace

QWidget* make_home_page(HomePanel& home, OptionsPanel& options) {
  auto* page = new Page(tr("Welcome to Homewarden"));
  page->rows()->addWidget(make_notice(home.lab_notice, page->body()));
  page->add_text(
      tr("Choose a room on the left to see its devices. Click a device to switch it, and move its "
         "slider to dim it."));
  bind(home.lab_norooms, page->add_text({}, false));
  add_links(home, page);
  page->add_text(
      tr("To remove a room, highlight the room in the left hand list and then press CTRL & D"));
  page->add_text(
      tr("To remove a device, highlight the device in the left hand list and then press CTRL & D"));
  add_settings(options, page);
  page->add_rest();
  return page;
}

}  // namespace homewarden::view
