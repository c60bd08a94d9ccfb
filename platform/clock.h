#pragma once

#include <chrono>

namespace homewarden {

// The time of day at the house, as a wall clock shows it.
struct LocalTime {
  int year = 1970;
  int month = 1;  // 1..12
  int day = 1;    // 1..31
  int hour = 0;
  int minute = 0;
  int second = 0;
  int millisecond = 0;
  int weekday = 4;   // 0 Sunday .. 6 Saturday
  int year_day = 0;  // 0 = 1 January
};

// A moment, whatever the clocks of the house show.
using SystemTime = std::chrono::sys_time<std::chrono::milliseconds>;

class Clock {
 public:
  virtual ~Clock() = default;

  // Time since some fixed moment. Never goes back and knows nothing of midnight, daylight saving or
  // a clock that is set: every length of time is measured with this.
  virtual std::chrono::milliseconds uptime() const = 0;

  // What the wall clock shows now; it may jump in both directions.
  virtual LocalTime local_time() const = 0;

  // The moment at which it shows that. It jumps when the clock is set, not with daylight saving.
  virtual SystemTime system_time() const = 0;
};

}  // namespace homewarden
