#pragma once

#include <QWidget>

namespace homewarden::view {

// Keeps the mouse wheel from changing a box or slider that the pointer only happens to pass over
// while a page is scrolled: it works where the keyboard focus is, and scrolls the page elsewhere.
void guard_wheel(QWidget* widget);

}  // namespace homewarden::view
