#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tools/emulator/agenda.h"
#include "tools/emulator/power_line.h"

namespace homewarden::emulator {

// What the interface tells about itself: its clock, which runs on from where it was set, and what
// it has seen of the house code it monitors.
class InterfaceStatus {
 public:
  explicit InterfaceStatus(const Agenda& agenda) : agenda_(agenda) {}

  // Seconds, minutes, hours / 2, day of the year, weekday and flags: bytes 1 to 6 of a clock
  // setting. Values out of range are taken as they carry over.
  void set_clock(std::string_view bytes);

  // Any frame on the power line, whoever sent it.
  void hear(const Transmission& what);

  // Power failed: the battery ran.
  void count_battery_minute() { ++battery_minutes_; }

  // The 14 bytes that answer a status request. The three pairs of unit bytes have bit i set for the
  // unit with line code i.
  std::string bytes() const;

 private:
  const Agenda& agenda_;
  Microseconds set_at_{0};
  std::int64_t seconds_of_day_ = 0;
  std::int64_t day_of_year_ = 0;  // counted from 0
  std::int64_t weekday_ = 0;      // 0 Sunday
  int monitored_house_ = 0;
  int battery_minutes_ = 0;
  bool function_heard_ = false;
  std::uint16_t addressed_ = 0;
  std::uint16_t on_ = 0;
  std::uint16_t dimmed_ = 0;
};

}  // namespace homewarden::emulator
