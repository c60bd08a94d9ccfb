#pragma once

#include "platform/event_loop.h"
#include "ui/controls.h"

namespace homewarden {

// Lets a timer of a window fire from the event loop.
class TimerDriver {
 public:
  // One for each timer, which must outlive it. A timer without one never fires.
  TimerDriver(EventLoop& loop, Timer& timer);
  TimerDriver(const TimerDriver&) = delete;
  TimerDriver& operator=(const TimerDriver&) = delete;
  ~TimerDriver();

 private:
  void rearm();

  EventLoop& loop_;
  Timer& timer_;
  EventLoop::CallId call_ = 0;
};

}  // namespace homewarden
