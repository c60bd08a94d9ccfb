#pragma once

namespace homewarden {

// Prints once a second how late a timer was at most, and for how much of its delay this thread was
// busy, as "loop 3.1 ms late, 2.8 ms busy". The rest of the time the machine was elsewhere.
void report_loop_turns();

}  // namespace homewarden
