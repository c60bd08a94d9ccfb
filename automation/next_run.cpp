#include "automation/next_run.h"

#include "automation/due_time.h"

namespace homewarden {
namespace {

constexpr int kDaysAhead = 8;  // one that was due today is due again in a week

}  // namespace

std::optional<Minute> next_run(const EventRecord& event, Minute now, const SunTimesOf& sun_times) {
  if (!why_never_run(event).empty()) return std::nullopt;
  const bool by_sun =
      event.time.find("sSet") != std::string::npos || event.time.find("sRise") != std::string::npos;
  const auto today = std::chrono::floor<std::chrono::days>(now);
  for (int ahead = 0; ahead < kDaysAhead; ++ahead) {
    const std::chrono::local_days day = today + std::chrono::days(ahead);
    const SunTimes sun = by_sun ? sun_times(day) : SunTimes();
    const auto minutes = due_minute(event.time, sun.sunrise_time, sun.sunset_time);
    if (!minutes) continue;
    const Minute due = day + std::chrono::minutes(*minutes);
    if (due > now && event.days.find(weekday_letter(due)) != std::string::npos) return due;
  }
  return std::nullopt;
}

}  // namespace homewarden
