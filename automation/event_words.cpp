#include "automation/event_words.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdlib>

#include "automation/due_time.h"
#include "base/text.h"

namespace homewarden {
namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::hours;
using std::chrono::minutes;

constexpr int kFullyOn = 100;
constexpr int kEvening = 18;
constexpr std::array<std::string_view, 7> kDays = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                                   "Friday", "Saturday", "Sunday"};

// In the order of kDayLetters.
std::array<bool, 7> chosen_days(std::string_view letters) {
  std::array<bool, 7> chosen{};
  for (std::size_t day = 0; day < chosen.size(); ++day)
    chosen[day] = letters.find(kDayLetters[day]) != std::string_view::npos;
  return chosen;
}

std::string capitalised(std::string text) {
  if (!text.empty() && text.front() >= 'a' && text.front() <= 'z')
    text.front() = static_cast<char>(text.front() - 'a' + 'A');
  return text;
}

std::string offset_in_words(std::string_view offset, std::string_view event) {
  const int count = static_cast<int>(leading_number(std::string(offset)));
  const std::string name(event);
  if (count == 0) return name;
  const int amount = std::abs(count);
  return std::to_string(amount) + (amount == 1 ? " hour " : " hours ") +
         (count > 0 ? "after " : "before ") + name;
}

std::size_t day_of_week(Minute when) {
  const std::chrono::weekday day(floor<days>(when));
  return day.iso_encoding() - 1;
}

}  // namespace

std::string days_in_words(std::string_view letters) {
  const auto chosen = chosen_days(letters);
  const auto count = std::count(chosen.begin(), chosen.end(), true);
  if (count == 7) return "every day";
  if (count == 0) return "never";
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
  if (time.starts_with("sSet:")) return offset_in_words(time.substr(5), "sunset");
  if (time.starts_with("sRise:")) return offset_in_words(time.substr(6), "sunrise");
  return std::string(time);
}

std::string action_in_words(const EventRecord& event) {
  if (event.action != "on") return "off";
  const auto level = event_level(event);
  return level && *level < kFullyOn ? "on at " + std::to_string(*level) + " %" : "on";
}

std::string event_in_words(const EventRecord& event, std::string_view device) {
  const std::string time = time_in_words(event.time);
  std::string days = days_in_words(event.days);
  if (event.freq == "once") {
    if (days.ends_with("days") && days != "weekdays") days.pop_back();
    days = "once, " + days;
  }
  const bool relative = time.find(' ') != std::string::npos;
  return capitalised(days) + (relative ? " " : " at ") + time + ", " + std::string(device) + " " +
         action_in_words(event);
}

std::string until_in_words(Minute when, Minute now) {
  const auto left = when - now;
  if (left < hours(1)) return "in " + std::to_string(left.count()) + " min";
  const auto ahead = (floor<days>(when) - floor<days>(now)).count();
  if (ahead <= 0 || left < hours(6))
    return "in " + std::to_string((left + minutes(30)) / hours(1)) + " h";
  return ahead == 1 ? "tomorrow" : "in " + std::to_string(ahead) + " days";
}

std::string day_in_words(Minute when, Minute now) {
  const auto ahead = (floor<days>(when) - floor<days>(now)).count();
  const auto hour = (when - floor<days>(when)) / hours(1);
  if (ahead == 0) return hour >= kEvening ? "tonight" : "today";
  if (ahead == 1) return "tomorrow";
  return std::string(kDays[day_of_week(when)]);
}

std::string clock_in_words(Minute when) {
  const auto since = (when - floor<days>(when)).count();
  const auto two = [](long number) { return (number < 10 ? "0" : "") + std::to_string(number); };
  return two(since / 60) + ":" + two(since % 60);
}

}  // namespace homewarden
