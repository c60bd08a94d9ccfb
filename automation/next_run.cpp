#include "automation/next_run.h"

#include <map>
#include <memory>
#include <utility>

#include "automation/due_time.h"

namespace homewarden {
namespace {

constexpr int kDaysAhead = 8;  // one that was due today is due again in a week

template <class Wanted>
std::optional<Minute> first_due(const EventRecord& event, Minute now, const SunTimesOf& sun_times,
                                Wanted wanted) {
  const bool by_sun = sun_of(event.time) != Sun::kNone;
  const auto today = std::chrono::floor<std::chrono::days>(now);
  for (int ahead = 0; ahead < kDaysAhead; ++ahead) {
    const std::chrono::local_days day = today + std::chrono::days(ahead);
    const SunTimes sun = by_sun ? sun_times(day) : SunTimes();
    const auto minutes = due_minute(event.time, sun.sunrise_time, sun.sunset_time);
    if (!minutes) continue;
    const Minute due = day + std::chrono::minutes(*minutes);
    if (due > now && wanted(due)) return due;
  }
  return std::nullopt;
}

}  // namespace

SunTimesOf remembered(SunTimesOf sun_times) {
  auto known = std::make_shared<std::map<std::chrono::local_days, SunTimes>>();
  return [known, sun_times = std::move(sun_times)](std::chrono::local_days day) {
    const auto found = known->find(day);
    return found != known->end() ? found->second
                                 : known->emplace(day, sun_times(day)).first->second;
  };
}

std::optional<Minute> next_due(const EventRecord& event, Minute now, const SunTimesOf& sun_times) {
  return first_due(event, now, sun_times, [](Minute) { return true; });
}

std::optional<Minute> next_run(const EventRecord& event, Minute now, const SunTimesOf& sun_times) {
  if (!why_never_run(event).empty()) return std::nullopt;
  const auto runs = [&event](Minute due) { return is_on_day(event, due); };
  if (event.freq != "once") return first_due(event, now, sun_times, runs);
  const auto due = next_due(event, now, sun_times);
  return due && runs(*due) ? due : std::nullopt;
}

}  // namespace homewarden
