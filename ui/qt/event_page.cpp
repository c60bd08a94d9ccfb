#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

#include "ui/qt/bindings.h"
#include "ui/qt/breaking_row.h"
#include "ui/qt/list_pane.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"

namespace homewarden::view {
namespace {

// The words between the boxes read as one sentence: Turn on and Dim to 60% at 07 : 30.
QWidget* make_action_row(EventPanel& panel, QWidget* body) {
  auto* row = new BreakingRow(body);
  row->first()->addWidget(make_short_combo(panel.lst_action, tr("Action"), row));
  auto* dim = new QLabel(row);
  bind(panel.Label29, dim);
  row->first()->addWidget(dim);
  row->first()->addWidget(make_short_combo(panel.lst_dim, tr("Dim level"), row));
  row->first()->addStretch();
  row->second()->addWidget(new QLabel(tr("at"), row));
  row->second()->addWidget(make_short_combo(panel.lst_hour, tr("Hour"), row));
  row->second()->addWidget(new QLabel(tr(":"), row));
  row->second()->addWidget(make_short_combo(panel.lst_min, tr("Minute"), row));
  row->second()->addStretch();
  return row;
}

QLayout* make_days_row(EventPanel& panel, QWidget* body) {
  auto* row = new QHBoxLayout;
  row->setSpacing(12);
  for (CheckBox& day : panel.days) {
    auto* box = new QCheckBox(body);
    bind(day, box, QString::fromStdString(day.tool_tip));
    row->addWidget(box);
  }
  row->addStretch();
  return row;
}

QLayout* make_frequency_row(EventPanel& panel, QWidget* body) {
  auto* row = new QHBoxLayout;
  row->addWidget(make_short_combo(panel.lst_freq, tr("Frequency"), body));
  row->addStretch();
  row->setSpacing(8);
  row->addWidget(make_button(panel.Command5, body));
  row->addWidget(make_button(panel.cmd_cancel, body));
  row->addWidget(make_button(panel.Command6, body));
  return row;
}

// The hint lies where the rows would be.
QWidget* make_event_list(EventPanel& panel, QWidget* body) {
  auto* list = new ListPane(panel.ListView1, tr("Events"), body);
  list->setMinimumHeight(180);
  auto* hint = make_quiet_label(list->viewport());
  hint->setAlignment(Qt::AlignCenter);
  hint->setAttribute(Qt::WA_TransparentForMouseEvents);  // the menu of the list opens there too
  bind(panel.lab_noevents, hint);
  auto* middle = new QVBoxLayout(list->viewport());
  middle->setContentsMargins(Page::kMargin, 0, Page::kMargin, 0);
  middle->addWidget(hint);
  return list;
}

}  // namespace

QWidget* make_event_page(EventPanel& panel) {
  auto* page = new Page(tr("Events"), 0);
  QWidget* body = page->body();
  QFormLayout* editor = page->add_form();
  editor->addRow(tr("Device:"), make_combo(panel.lst_eventdevice, tr("Device"), body));
  editor->addRow(tr("Turn"), make_action_row(panel, body));
  editor->addRow(tr("Days of the week"), make_days_row(panel, body));
  editor->addRow(tr("Frequency"), make_frequency_row(panel, body));
  page->rows()->addWidget(make_notice(panel.lab_eventnotice, body));
  page->rows()->addWidget(make_event_list(panel, body), 1);
  page->rows()->addWidget(make_link(panel.lab_undo, body), 0, Qt::AlignLeft);
  return page;
}

}  // namespace homewarden::view
