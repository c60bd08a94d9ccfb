#include "ui/qt/popup_menu.h"

#include "platform/qt/text_codec.h"

namespace homewarden::view {

void fill_menu(QMenu& shown, const Menu& menu) {
  for (MenuEntry* entry : menu.entries) {
    if (entry->caption == "-")
      shown.addSeparator();
    else
      QObject::connect(shown.addAction(qt::from_code_page(entry->caption)), &QAction::triggered,
                       &shown, [entry] { entry->click(); });
  }
}

}  // namespace homewarden::view
