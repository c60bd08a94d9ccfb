#include "automation/event_words.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>

#include "automation/due_time.h"
#include "base/text.h"
#include "core/dates.h"

namespace homewarden {
namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::hours;
using std::chrono::minutes;

constexpr int kFullyOn = 100;
constexpr int kEvening = 18;
const char* const kPercent = "\xA0%";  // with a no-break space
constexpr std::array<std::string_view, 7> kDays = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                                   "Friday", "Saturday", "Sunday"};

// In the order of kDayLetters.
std::array<bool, 7> chosen_days(std::string_view letters) {
  std::array<bool, 7> chosen{};
  for (std::size_t day = 0; day < chosen.size(); ++day)
    chosen[day] = contains_ignoring_case(letters, kDayLetters.substr(day, 1));
  return chosen;
}

std::string days_of(const EventRecord& event) {
  std::string which = days_in_words(event.days);
  if (event.freq != "once") return which;
  const auto chosen = chosen_days(event.days);
  const auto count = std::count(chosen.begin(), chosen.end(), true);
  if (count == 7) return "once";
  if (count == 1) return "once, on " + which.substr(0, which.size() - 1);
  return "once, " + which;
}

std::size_t day_of_week(Minute when) {
  const std::chrono::weekday day(floor<days>(when));
  return day.iso_encoding() - 1;
}

}  // namespace

std::string capitalised(std::string text) {
  if (!text.empty() && text.front() >= 'a' && text.front() <= 'z')
    text.front() = static_cast<char>(text.front() - 'a' + 'A');
  return text;
}

std::string days_in_words(std::string_view letters) {
  const auto chosen = chosen_days(letters);
  const auto count = std::count(chosen.begin(), chosen.end(), true);
  if (count == 7) return "every day";
  if (count == 0) return "on no day";
  const bool saturday = chosen[5];
  const bool sunday = chosen[6];
  if (count == 5 && !saturday && !sunday) return "weekdays";
  if (count == 2 && saturday && sunday) return "weekend";
  std::string words;
  for (std::size_t day = 0; day < chosen.size(); ++day) {
    if (!chosen[day]) continue;
    if (count == 1) return std::string(kDays[day]) + "s";
    words += (words.empty() ? "" : ", ") + std::string(kDays[day].substr(0, 3));
  }
  return words;
}

std::string time_in_words(std::string_view time) {
  const Sun sun = sun_of(time);
  if (sun == Sun::kNone) return time.empty() ? "no time" : std::string(time);
  const std::string name = sun == Sun::kRise ? "sunrise" : "sunset";
  const int offset = sun_offset(time);
  if (offset == 0) return name;
  const int amount = std::abs(offset);
  return std::to_string(amount) + (amount == 1 ? " hour " : " hours ") +
         (offset > 0 ? "after " : "before ") + name;
}

std::string action_in_words(const EventRecord& event) {
  if (event.action != "on") return "off";
  const auto level = event_level(event);
  return level && *level < kFullyOn ? "on at " + std::to_string(*level) + kPercent : "on";
}

std::string event_in_words(const EventRecord& event, std::string_view device) {
  const bool after_sun = sun_offset(event.time) != 0;
  return capitalised(days_of(event)) + (after_sun ? " " : " at ") + time_in_words(event.time) +
         ", " + std::string(device) + " " + action_in_words(event);
}

std::string occasion_in_words(const EventRecord& event) {
  const Sun sun = sun_of(event.time);
  if (sun == Sun::kNone) return days_of(event);
  return days_of(event) + (sun_offset(event.time) == 0 ? " at " : ", ") + time_in_words(event.time);
}

std::string until_in_words(Minute when, Minute now) {
  const auto left = when - now;
  if (left < minutes(1)) return "now";
  if (left < hours(1)) return "in " + std::to_string(left.count()) + " min";
  const auto ahead = (floor<days>(when) - floor<days>(now)).count();
  if (ahead <= 0 || left < hours(6))
    return "in " + std::to_string((left + minutes(30)) / hours(1)) + " h";
  return ahead == 1 ? "tomorrow" : "in " + std::to_string(ahead) + " days";
}

std::string day_in_words(Minute when, Minute now) {
  const auto ahead = (floor<days>(when) - floor<days>(now)).count();
  if (ahead <= 0) return minute_of_day(when) >= kEvening * 60 ? "tonight" : "today";
  if (ahead == 1) return "tomorrow";
  return std::string(kDays[day_of_week(when)]) + (ahead < 7 ? "" : " next week");
}

std::string clock_in_words(Minute when) {
  return hh_mm(when);
}

}  // namespace homewarden
