#include <QComboBox>
#include <QListWidget>
#include <QPushButton>

#include "ui/qt/bindings.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"

namespace homewarden::view {
QWidget* make_macro_page(MacroPanel& panel) {
  auto* page = new Page(tr("Macros"), 820);
  QWidget* body = page->body();
  page->add_text(
      tr("Adding a macro is easy. Just follow the steps below, then whenever your event occurs the "
         "macro will trigger. Macros can start an endless loop if you misconfigure them so be "
         "careful."));

  page->add_text(tr("Step 1  This is the trigger, select the device that will trigger your macro"),
                 false);
  page->rows()->addWidget(make_combo(panel.com_sel1, tr("Trigger device"), body));
  page->add_text(tr("Step 2  Now select what 'event' will trigger this macro."), false);
  page->rows()->addWidget(make_combo(panel.mac_event, tr("Trigger action"), body), 0,
                          Qt::AlignLeft);
  page->add_text(tr("Step 3  Finally Select the device to trigger and also the action to take e.g. "
                    "Turn On."),
                 false);
  auto* target = new QHBoxLayout;
  target->addWidget(make_combo(panel.com_sel2, tr("Device to switch"), body), 1);
  target->addWidget(make_combo(panel.mac_whattodo, tr("Action to take"), body));
  target->addWidget(make_button(panel.com_savemacro, body));
  page->rows()->addLayout(target);

  page->rows()->addSpacing(10);
  page->add_text(tr("Below are your active Macro's. Click on the macro to delete it."));
  auto* list = new QListWidget(body);
  bind(panel.ListVIew2, list, tr("Macros"));
  list->setStyleSheet("QListWidget::item { padding: 3px 2px; }");
  list->setMinimumHeight(140);
  page->rows()->addWidget(list, 1);
  page->rows()->addWidget(make_notice(panel.lab_macronotice, body));
  return page;
}

}  // namespace homewarden::view
