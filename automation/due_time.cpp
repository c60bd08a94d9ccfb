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
long hours_behind(std::string_view time, std::string_view name) {
  if (time.size() < name.size() + 2) return 0;
  return std::lround(leading_number(time.substr(name.size() + 1, 2)));
}

std::optional<int> sun_time(std::string_view time, std::string_view name, std::optional<Date> sun) {
  if (!sun || time.size() < name.size() + 2) return std::nullopt;
  const long hours = hours_behind(time, name);
  const int minutes = minute_of_day(std::chrono::floor<std::chrono::minutes>(*sun));
  const long due = (minutes + hours * 60) % kDay;
  return static_cast<int>((due + kDay) % kDay);
}

}  // namespace

// Nearly every line of a list is a clock time, and every line is asked each minute.
std::optional<int> due_minute(std::string_view time, std::optional<Date> sunrise,
                              std::optional<Date> sunset) {
  if (!time.empty() && is_digit(time.front())) return clock_time(time);
  switch (sun_of(time)) {
    case Sun::kRise:
      return sun_time(time, kSunrise, sunrise);
    case Sun::kSet:
      return sun_time(time, kSunset, sunset);
    case Sun::kNone:
      break;
  }
  return std::nullopt;
}

Sun sun_of(std::string_view time) {
  if (!time.empty() && is_digit(time.front())) return Sun::kNone;
  if (contains_ignoring_case(time, kSunrise)) return Sun::kRise;
  return contains_ignoring_case(time, kSunset) ? Sun::kSet : Sun::kNone;
}

int sun_offset(std::string_view time) {
  const Sun sun = sun_of(time);
  if (sun == Sun::kNone) return 0;
  return static_cast<int>(hours_behind(time, sun == Sun::kRise ? kSunrise : kSunset));
}

char weekday_letter(Minute minute) {
  const std::chrono::weekday day(std::chrono::floor<std::chrono::days>(minute));
  return "rmtwufs"[day.c_encoding()];
}

bool is_on_day(const EventRecord& event, Minute minute) {
  return contains_ignoring_case(event.days, std::string(1, weekday_letter(minute)));
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
