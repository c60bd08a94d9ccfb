#pragma once

#include <string>

#include "base/text.h"
#include "platform/clock.h"

namespace homewarden {

inline std::string hh_mm(const LocalTime& time) {
  return two_digits(time.hour) + ":" + two_digits(time.minute);
}

// The hour, 0 to 23, without a leading zero: "7:05:09".
inline std::string h_mm_ss(const LocalTime& time) {
  return std::to_string(time.hour) + ":" + two_digits(time.minute) + ":" + two_digits(time.second);
}

inline std::string hh_mm_ss(const LocalTime& time) {
  return hh_mm(time) + ":" + two_digits(time.second);
}

// As programs write it (RFC 3339, without a zone): "2026-11-24T07:30:00".
std::string iso_text(const LocalTime& time);
// In UTC: "2026-11-24T07:30:00.123Z". For years from 0 to 9999.
std::string iso_text(SystemTime time);

}  // namespace homewarden
