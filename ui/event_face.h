#pragma once

#include <string>

namespace homewarden {

// A timed event as a person reads it.
struct EventFace {
  enum class Clock { kTime, kSunrise, kSunset };

  int row = -1;       // in `ListView1`; -1 for one that is not listed there
  std::string group;  // what it is listed under: a day, a room, a device
  std::string time;   // of its next run, "16:03"; "" when that is not known
  Clock clock = Clock::kTime;
  bool on = false;
  std::string device;   // "Porch Light"
  std::string action;   // "on at 40 %"
  std::string detail;   // "Garden, every day at sunset"
  std::string until;    // "in 22 min"; "" where the group says enough
  std::string warning;  // why it does nothing, a sentence; "" when it does something

  bool operator==(const EventFace&) const = default;
};

}  // namespace homewarden
