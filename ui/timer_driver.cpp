#include "ui/timer_driver.h"

#include <chrono>

namespace homewarden {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kMinute{60000};

// Without this, each tick would come a little later in its minute than the one before, until a
// minute had none.
milliseconds countdown(const Timer& timer, const LocalTime& now) {
  const milliseconds interval(timer.interval());
  if (timer.start() != Timer::Start::kWholeMinute || interval != kMinute) return interval;
  return kMinute - milliseconds(now.second * 1000 + now.millisecond);
}

}  // namespace

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
  call_ = loop_.call_after(countdown(timer_, loop_.local_time()), [this] {
    call_ = 0;
    rearm();  // first, so that the tick may change the interval
    timer_.tick();
  });
}

}  // namespace homewarden
