#pragma once

#include "platform/cm11/driver.h"
#include "platform/event_loop.h"

namespace homewarden {

// Prints the bytes on the serial line on standard error: seconds, direction, bytes in hexadecimal.
void trace_serial_line(cm11::Driver& driver, const EventLoop& loop);

}  // namespace homewarden
