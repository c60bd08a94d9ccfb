#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

#include "ui/qt/bindings.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"
#include "ui/qt/watch.h"

namespace homewarden {
namespace {

QString tr(const char* text) {
  return QObject::tr(text);
}

void add_links(FrmMain& form, Page* page) {
  auto* links = new QVBoxLayout;
  links->setSpacing(2);
  links->setContentsMargins(0, 0, 0, 0);
  for (Label* link : {&form.Label3, &form.Label4, &form.Label5, &form.Label51, &form.Label63})
    links->addWidget(make_link(*link, page->body()));
  page->rows()->addLayout(links);
}

// Location and start-up settings.
void add_settings(FrmMain& form, Page* page) {
  auto* frame = new QWidget(page->body());
  bind_common(form.Frame1, frame, tr("Location and start-up settings"));
  auto* rows = new QFormLayout(frame);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  rows->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  rows->setHorizontalSpacing(18);
  rows->setVerticalSpacing(10);
  rows->addRow(tr("City:"), make_combo(form.com_city, tr("City"), frame));
  const auto add_box = [frame, rows](CheckBox& box) {
    auto* check = new QCheckBox(frame);
    bind(box, check);
    rows->addRow(QString(), check);
  };
  add_box(form.Check1);
  auto* sun_times = new QLabel(frame);
  bind(form.lab_sunset, sun_times);
  rows->addRow(QString(), sun_times);
  for (CheckBox* box : {&form.chk_lww, &form.chk_service, &form.chk_startup}) add_box(*box);
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
  page->add_heading(tr("Location and start-up"));
  add_settings(form, page);
  page->add_rest();
  return page;
}

}  // namespace homewarden
