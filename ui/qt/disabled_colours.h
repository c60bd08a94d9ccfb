#pragma once

#include <QPalette>
#include <QWidget>

namespace homewarden::view {

// A list that is disabled for a while looks so, but can still be read, which the desktop's own
// colours do not always grant. `ground` is the colour that it then has: Base or Window.
void keep_readable_when_disabled(QWidget* list, QPalette::ColorRole ground);

}  // namespace homewarden::view
