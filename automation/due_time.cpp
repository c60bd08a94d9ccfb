#include "automation/due_time.h"

#include <charconv>
#include <chrono>
#include <cmath>

#include "base/text.h"
#include "core/dates.h"
#include "core/devices.h"

namespace homewarden {
namespace {

constexpr int kDay = 24 * 60;
constexpr std::string_view kSunset = "sSet";
constexpr std::string_view kSunrise = "sRise";

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

// One or two digits.
std::optional<int> small_number(std::string_view text, int limit) {
  if (text.empty() || text.size() > 2) return std::nullopt;
  int number = 0;
  for (const char c : text) {
    if (!is_digit(c)) return std::nullopt;
    number = number * 10 + (c - '0');
  }
  return number < limit ? std::optional(number) : std::nullopt;
}

std::optional<int> clock_time(std::string_view time) {
  const auto colon = time.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const auto hour = small_number(time.substr(0, colon), 24);
  const auto minute = small_number(time.substr(colon + 1), 60);
  if (!hour || !minute) return std::nullopt;
  return *hour * 60 + *minute;
}

// The two characters behind the colon are a signed number of hours.
std::optional<int> sun_time(std::string_view time, std::string_view name, std::optional<Date> sun) {
  if (!sun || time.size() < name.size() + 2) return std::nullopt;
  const long hours = std::lround(leading_number(time.substr(name.size() + 1, 2)));
  const int minutes = minute_of_day(std::chrono::floor<std::chrono::minutes>(*sun));
  const long due = (minutes + hours * 60) % kDay;
  return static_cast<int>((due + kDay) % kDay);
}

}  // namespace

// Nearly every line of a list is a clock time, and every line is asked each minute.
std::optional<int> due_minute(std::string_view time, std::optional<Date> sunrise,
                              std::optional<Date> sunset) {
  if (!time.empty() && is_digit(time.front())) return clock_time(time);
  if (contains_ignoring_case(time, kSunrise)) return sun_time(time, kSunrise, sunrise);
  if (contains_ignoring_case(time, kSunset)) return sun_time(time, kSunset, sunset);
  return std::nullopt;
}

char weekday_letter(Minute minute) {
  const std::chrono::weekday day(std::chrono::floor<std::chrono::days>(minute));
  return "rmtwufs"[day.c_encoding()];
}

std::optional<int> event_level(const EventRecord& event) {
  const auto level = to_integer16(event.dim);
  if (!level || *level < 0 || *level > 100) return std::nullopt;
  return level;
}

std::string_view why_never_run(const EventRecord& event) {
  const Device device{"", "", event.housecode, to_integer16(event.unit).value_or(0)};
  if (!device.has_address()) return "its address is none (house codes are A to P, units 1 to 16)";
  if (!due_minute(event.time, Date(), Date())) return "its time is none";
  if (event.action == "on" && !event_level(event)) return "its dim level is none";
  if (to_lower(event.days).find_first_of(kDayLetters) == std::string::npos)
    return "it has no day of the week";
  return "";
}

}  // namespace homewarden
