#include "ui/qt/popup_menu.h"

#include "platform/qt/text_codec.h"

namespace homewarden::view {

void fill_menu(QMenu& shown, const Menu& menu) {
  for (MenuEntry* entry : menu.entries) {
    if (entry->caption == "-") {
      shown.addSeparator();
      continue;
    }
    QAction* action = shown.addAction(qt::from_code_page(entry->caption));
    tell_keys(*action, QString::fromStdString(entry->keys));
    QObject::connect(action, &QAction::triggered, &shown, [entry] { entry->click(); });
  }
}

void tell_keys(QAction& entry, const QString& keys) {
  entry.setShortcut(QKeySequence(keys));
  entry.setShortcutContext(Qt::WidgetShortcut);
  entry.setShortcutVisibleInContextMenu(true);
}

}  // namespace homewarden::view
