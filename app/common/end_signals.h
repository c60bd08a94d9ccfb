#pragma once

#include <functional>

#include "platform/qt/qt_loop.h"

namespace homewarden {

// Calls the function from the loop when the process is asked to end (interrupt, terminate, hang
// up). Asked again some seconds later, the process ends at once. To be called once.
void on_end_signal(qt::QtLoop& loop, std::function<void()> function);

}  // namespace homewarden
