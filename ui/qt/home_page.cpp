#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

#include "ui/qt/bindings.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"
#include "ui/qt/watch.h"

namespace homewarden {
namespace {

void add_links(FrmMain& form, Page* page) {
  auto* links = new QVBoxLayout;
  links->setSpacing(2);
  links->setContentsMargins(0, 0, 0, 0);
  for (Label* link : {&form.Label3, &form.Label4, &form.Label5, &form.Label51, &form.Label63})
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

void add_settings(FrmMain& form, Page* page) {
  auto* frame = new QWidget(page->body());
  bind_common(form.Frame1, frame, tr("Location and start-up settings"));
  auto* rows = new QVBoxLayout(frame);
  rows->setContentsMargins(0, Page::kHeadingGap, 0, 0);
  rows->setSpacing(10);
  rows->addWidget(make_heading(tr("Location"), frame));
  add_sun_times(form.lab_sunset, rows, frame);
  auto* city = new QHBoxLayout;
  city->setSpacing(18);
  city->addWidget(new QLabel(tr("City:"), frame));
  city->addWidget(make_combo(form.com_city, tr("City"), frame), 1);
  rows->addLayout(city);
  add_box(form.Check1, rows, frame);
  rows->addSpacing(Page::kHeadingGap);
  rows->addWidget(make_heading(tr("Start-up"), frame));
  for (CheckBox* box : {&form.chk_lww, &form.chk_service, &form.chk_startup})
    add_box(*box, rows, frame);
  page->rows()->addWidget(frame);
}

}  // namespace

QWidget* make_home_page(FrmMain& form) {
  auto* page = new Page(tr("Welcome to Homewarden"));
  page->rows()->addWidget(make_notice(form.lab_notice, page->body()));
  page->add_text(
      tr("Choose a room on the left to see its devices. Click a device to switch it, and move its "
         "slider to dim it."));
  bind(form.lab_norooms, page->add_text({}, false));
  add_links(form, page);
  page->add_text(
      tr("To remove a room, highlight the room in the left hand list and then press CTRL & D"));
  page->add_text(
      tr("To remove a device, highlight the device in the left hand list and then press CTRL & D"));
  add_settings(form, page);
  page->add_rest();
  return page;
}

}  // namespace homewarden
