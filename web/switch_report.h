#pragma once

#include <string>

#include "base/text.h"
#include "core/time_text.h"
#include "x10/device_commands.h"

namespace homewarden {

// What the status line says of a switch that came over the network, however it came.
inline std::string switch_report(const SwitchTarget& target, bool on, const LocalTime& at) {
  constexpr std::size_t kLongestHouseCode = 20;  // whoever asked may have written anything
  return std::string("Internet Turned ") + (on ? "ON" : "OFF") + " device with housecode " +
         on_one_line(target.house_code, kLongestHouseCode) + std::to_string(target.unit) + " at " +
         hh_mm_ss(at) + target.asked_by;
}

}  // namespace homewarden
