#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "base/date.h"
#include "platform/event_loop.h"
#include "ui/controls.h"
#include "ui/shared_state.h"

namespace homewarden {

// The clock in the status bar. Tells when the sun times of another day are needed, and lets the
// scheduler run at once at its first tick, for what was missed before the program ran, and when the
// wall clock has jumped: the machine slept, summer time began or ended, or somebody set the clock.
class HouseClock {
 public:
  // `new_day` is called at the first tick, on every tick of the first minute of a day, and when the
  // date changed in another way.
  HouseClock(StatusBar& status, ProgramTimers& timers, EventLoop& loop,
             std::function<void()> new_day);

 private:
  void tick();
  bool is_first_or_jumped(Date now);

  StatusBar& status_;
  ProgramTimers& timers_;
  EventLoop& loop_;
  std::function<void()> new_day_;
  std::optional<Date> last_tick_;
  std::chrono::milliseconds last_uptime_{0};
};

}  // namespace homewarden
