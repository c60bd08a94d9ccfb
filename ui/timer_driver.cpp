#include "ui/timer_driver.h"

#include <chrono>

namespace homewarden {

TimerDriver::TimerDriver(EventLoop& loop, Timer& timer) : loop_(loop), timer_(timer) {
  timer_.rearmed.connect([this] { rearm(); });
  rearm();
}

TimerDriver::~TimerDriver() {
  loop_.cancel(call_);
}

void TimerDriver::rearm() {
  if (call_ != 0) loop_.cancel(call_);
  call_ = 0;
  if (!timer_.enabled() || timer_.interval() <= 0) return;
  call_ = loop_.call_after(std::chrono::milliseconds(timer_.interval()), [this] {
    call_ = 0;
    rearm();  // first, so that the tick may change the interval
    timer_.tick();
  });
}

}  // namespace homewarden
