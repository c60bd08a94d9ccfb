#pragma once

#include <QWidget>

namespace homewarden {

// Prints "first paint 312 ms" once the window has been painted, counted from the start of the
// process, and "peak memory 71 MB" three seconds later.
void report_first_paint(QWidget& window);

}  // namespace homewarden
