#include "automation/house_clock.h"

#include <utility>

#include "core/dates.h"
#include "core/time_text.h"

namespace homewarden {
namespace {

using std::chrono::abs;
using std::chrono::days;
using std::chrono::floor;
using std::chrono::milliseconds;
using std::chrono::seconds;

// More than a clock that is being adjusted moves within a second.
constexpr milliseconds kJump{2500};

}  // namespace

HouseClock::HouseClock(StatusBar& status, ProgramTimers& timers, EventLoop& loop,
                       std::function<void()> new_day)
    : status_(status), timers_(timers), loop_(loop), new_day_(std::move(new_day)) {
  timers.timetimer.tick.connect([this] { tick(); });
}

void HouseClock::tick() {
  const LocalTime local = loop_.local_time();
  status_.panel1 = h_mm_ss(local);

  const Date now = date_of(local);
  // Before the first tick the clock may have been set since the sun times were computed.
  const bool another_date = !last_tick_ || floor<days>(*last_tick_) != floor<days>(now);
  if (another_date || hh_mm(local) == "00:00") new_day_();
  if (is_first_or_jumped(now)) timers_.eventtimer.tick();
}

bool HouseClock::is_first_or_jumped(Date now) {
  const milliseconds uptime = loop_.uptime();
  const bool first = !last_tick_;
  const milliseconds shown = first ? milliseconds(0) : now - *last_tick_;
  const milliseconds passed = uptime - last_uptime_;
  last_tick_ = now;
  last_uptime_ = uptime;
  return first || abs(shown - passed) > kJump;
}

}  // namespace homewarden
