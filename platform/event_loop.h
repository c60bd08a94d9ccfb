#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

#include "platform/clock.h"

namespace homewarden {

// The one loop everything runs on. Functions are called from the loop, never from inside these
// members, in the order in which they come due; those due at the same time in the order of asking.
class EventLoop : public Clock {
 public:
  // Names a call that was asked for; never 0, never used twice.
  using CallId = std::uint64_t;

  // Calls the function once, when the delay has passed by uptime(). A delay of zero or less lets
  // everything that is pending now (input, timers that are due, calls asked for before) go first.
  virtual CallId call_after(std::chrono::milliseconds delay, std::function<void()> function) = 0;

  // The function will not be called. An id that has been called or cancelled before, and 0, is
  // ignored.
  virtual void cancel(CallId id) = 0;

  // Ends the program once the function that runs now has returned. Asking twice is asking once.
  virtual void quit() = 0;
};

}  // namespace homewarden
