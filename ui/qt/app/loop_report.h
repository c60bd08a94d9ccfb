#pragma once

namespace homewarden {

// Prints once a second how late a timer was at most, as "loop 3.1 ms": for so long the event loop
// was busy, or the machine elsewhere, without a break.
void report_loop_turns();

}  // namespace homewarden
