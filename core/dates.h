#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "base/date.h"
#include "base/text.h"
#include "platform/clock.h"

namespace homewarden {

inline Date date_of(const LocalTime& time) {
  using namespace std::chrono;
  const year_month_day day = std::chrono::year(time.year) / time.month / time.day;
  return local_days(day) + hours(time.hour) + minutes(time.minute) + seconds(time.second);
}

inline Minute minute_of(const LocalTime& time) {
  return std::chrono::floor<std::chrono::minutes>(date_of(time));
}

// Minutes since the midnight of its day, 0 to 1439.
inline int minute_of_day(Minute minute) {
  return static_cast<int>((minute - std::chrono::floor<std::chrono::days>(minute)).count());
}

// "07:05" of a time of day in minutes, 0 to 1439.
inline std::string hh_mm(int minute_of_day) {
  return two_digits(minute_of_day / 60) + ":" + two_digits(minute_of_day % 60);
}

inline std::string hh_mm(Minute minute) {
  return hh_mm(minute_of_day(minute));
}

// "2023-06-21" and "2023-06-21 07:05".
std::string text_of(std::chrono::local_days day);
std::string text_of(Minute minute);
// Nothing for what is not written in just this way, with a year of four digits.
std::optional<Minute> parse_minute(std::string_view text);

}  // namespace homewarden
