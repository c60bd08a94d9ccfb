#include "core/time_text.h"

#include <algorithm>
#include <chrono>
#include <cstddef>

namespace homewarden {
namespace {

std::string with_zeros(unsigned number, std::size_t digits) {
  std::string text = std::to_string(number);
  return std::string(digits - std::min(digits, text.size()), '0') + text;
}

std::string iso_day(int year, unsigned month, unsigned day) {
  return with_zeros(static_cast<unsigned>(year), 4) + "-" + with_zeros(month, 2) + "-" +
         with_zeros(day, 2);
}

}  // namespace

std::string iso_text(const LocalTime& time) {
  return iso_day(time.year, static_cast<unsigned>(time.month), static_cast<unsigned>(time.day)) +
         "T" + hh_mm_ss(time);
}

std::string iso_text(SystemTime time) {
  const auto day = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  const auto rest = (time - day).count();
  const auto second = static_cast<int>(rest / 1000);
  return iso_day(static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                 static_cast<unsigned>(date.day())) +
         "T" + two_digits(second / 3600) + ":" + two_digits(second / 60 % 60) + ":" +
         two_digits(second % 60) + "." + with_zeros(static_cast<unsigned>(rest % 1000), 3) + "Z";
}

}  // namespace homewarden
