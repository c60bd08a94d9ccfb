#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QTreeWidget>

#include "ui/qt/bindings.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"

namespace homewarden {
namespace {

QString tr(const char* text) {
  return QObject::tr(text);
}

// The words between the boxes read as one sentence: Turn on and Dim to 60% at 07 : 30.
QLayout* make_action_row(FrmMain& form, QWidget* body) {
  auto* row = new QHBoxLayout;
  row->setSpacing(6);
  row->addWidget(make_combo(form.lst_action, tr("Action"), body));
  auto* dim = new QLabel(body);
  bind(form.Label29, dim);
  row->addWidget(dim);
  row->addWidget(make_combo(form.lst_dim, tr("Dim level"), body));
  row->addWidget(new QLabel(tr("at"), body));
  row->addWidget(make_combo(form.lst_hour, tr("Hour"), body));
  row->addWidget(new QLabel(tr(":"), body));
  row->addWidget(make_combo(form.lst_min, tr("Minute"), body));
  row->addStretch();
  return row;
}

QLayout* make_days_row(FrmMain& form, QWidget* body) {
  auto* row = new QHBoxLayout;
  row->setSpacing(12);
  for (CheckBox& day : form.days) {
    auto* box = new QCheckBox(body);
    bind(day, box, QString::fromStdString(day.tool_tip));
    row->addWidget(box);
  }
  row->addStretch();
  return row;
}

QLayout* make_frequency_row(FrmMain& form, QWidget* body) {
  auto* row = new QHBoxLayout;
  row->addWidget(make_combo(form.lst_freq, tr("Frequency"), body));
  row->addStretch();
  row->addWidget(make_button(form.Command5, body));
  row->addSpacing(8);
  row->addWidget(make_button(form.Command6, body));
  return row;
}

}  // namespace

QWidget* make_event_page(FrmMain& form) {
  auto* page = new Page(tr("Events"), 0);
  QWidget* body = page->body();
  QFormLayout* editor = page->add_form();
  editor->addRow(tr("Device:"), make_combo(form.lst_eventdevice, tr("Device"), body));
  editor->addRow(tr("Turn"), make_action_row(form, body));
  editor->addRow(tr("Days of the week"), make_days_row(form, body));
  editor->addRow(tr("Frequency"), make_frequency_row(form, body));
  auto* list = new QTreeWidget(body);
  bind(form.ListView1, list, tr("Events"));
  list->setStyleSheet("QTreeWidget::item { padding: 3px 2px; }");
  list->setMinimumHeight(180);
  auto* empty = page->add_text({});
  bind(form.lab_noevents, empty);
  page->rows()->addWidget(make_notice(form.lab_eventnotice, body));
  page->rows()->addWidget(list, 1);
  return page;
}

}  // namespace homewarden
