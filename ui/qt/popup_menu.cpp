#include "ui/qt/popup_menu.h"

#include "platform/qt/text_codec.h"
#include "ui/qt/watch.h"

namespace homewarden::view {

void fill_menu(QMenu& shown, const Menu& menu) {
  for (MenuEntry* entry : menu.entries) {
    QAction* action = entry->caption == "-" ? shown.addSeparator()
                                            : shown.addAction(qt::from_code_page(entry->caption));
    if (!entry->keys.empty()) tell_keys(*action, QString::fromStdString(entry->keys));
    QObject::connect(action, &QAction::triggered, &shown, [entry] { entry->click(); });
    follow(entry->visible, action, [action](bool visible) { action->setVisible(visible); });
  }
}

void tell_keys(QAction& entry, const QString& keys) {
  entry.setShortcut(QKeySequence(keys));
  entry.setShortcutContext(Qt::WidgetShortcut);
  entry.setShortcutVisibleInContextMenu(true);
}

}  // namespace homewarden::view
