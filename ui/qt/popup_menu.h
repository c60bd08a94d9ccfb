#pragma once

#include <QMenu>

#include "ui/controls.h"

namespace homewarden::view {

// Puts the entries of the menu into the widget that shows them, which the menu outlives.
void fill_menu(QMenu& shown, const Menu& menu);

}  // namespace homewarden::view
