#include "core/dates.h"

#include <algorithm>

namespace homewarden {

std::string text_of(std::chrono::local_days day) {
  const std::chrono::year_month_day date(day);
  std::string year = std::to_string(static_cast<int>(date.year()));
  if (year.size() < 4) year.insert(0, 4 - year.size(), '0');
  return year + '-' + two_digits(static_cast<int>(static_cast<unsigned>(date.month()))) + '-' +
         two_digits(static_cast<int>(static_cast<unsigned>(date.day())));
}

std::string text_of(Minute minute) {
  return text_of(std::chrono::floor<std::chrono::days>(minute)) + ' ' + hh_mm(minute);
}

std::optional<Minute> parse_minute(std::string_view text) {
  constexpr std::string_view kForm = "0000-00-00 00:00";
  if (text.size() != kForm.size()) return std::nullopt;
  const auto fits = [](char c, char form) {
    return form == '0' ? c >= '0' && c <= '9' : c == form;
  };
  if (!std::equal(text.begin(), text.end(), kForm.begin(), fits)) return std::nullopt;
  const auto number = [text](std::size_t place, std::size_t length) {
    return to_integer16(text.substr(place, length)).value_or(0);
  };
  const std::chrono::year_month_day date =
      std::chrono::year(number(0, 4)) / number(5, 2) / number(8, 2);
  if (!date.ok() || number(11, 2) > 23 || number(14, 2) > 59) return std::nullopt;
  return std::chrono::local_days(date) + std::chrono::hours(number(11, 2)) +
         std::chrono::minutes(number(14, 2));
}

}  // namespace homewarden
