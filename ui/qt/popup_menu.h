#pragma once

#include <QMenu>

#include "ui/controls.h"

namespace homewarden::view {

// Puts the entries of the menu into the widget that shows them, which the menu outlives.
void fill_menu(QMenu& shown, const Menu& menu);

// The keys that do the same, beside the entry; they are told only: somebody else takes them.
void tell_keys(QAction& entry, const QString& keys);

}  // namespace homewarden::view
