#include "api/event_answers.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "api/line_id.h"
#include "automation/due_time.h"
#include "automation/event_faces.h"
#include "base/code_page.h"
#include "base/text.h"
#include "core/dates.h"

namespace homewarden {
namespace {

Json clock_of(const EventFace& face) {
  switch (face.clock) {
    case EventFace::Clock::kSunrise:
      return "sunrise";
    case EventFace::Clock::kSunset:
      return "sunset";
    case EventFace::Clock::kTime:
      break;
  }
  return "time";
}

// "07:30"; "+2" and "-1" are hours from the sun time.
Json time_of(const EventRecord& event) {
  if (sun_of(event.time) != Sun::kNone) {
    const int hours = sun_offset(event.time);
    return (hours < 0 ? "" : "+") + std::to_string(hours);
  }
  const auto minute = due_minute(event.time, std::nullopt, std::nullopt);
  return minute ? Json(hh_mm(*minute)) : Json();
}

Json days_of(const EventRecord& event) {
  constexpr std::string_view kNames[] = {"monday", "tuesday",  "wednesday", "thursday",
                                         "friday", "saturday", "sunday"};
  Json::Array days;
  for (std::size_t day = 0; day < kDayLetters.size(); ++day)
    if (contains_ignoring_case(event.days, kDayLetters.substr(day, 1)))
      days.emplace_back(kNames[day]);
  return days;
}

Json moment_of(const std::optional<Minute>& minute) {
  return minute ? Json(replace_all(text_of(*minute), " ", "T")) : Json();
}

}  // namespace

struct EventAnswers::Planned {
  std::optional<Minute> next;
  bool on = true;
  Json json;
};

std::string event_id(const EventRecord& event) {
  return line_id("e", event.key());
}

EventAnswers::EventAnswers(OffEvents& events, const HouseIndex& house, const Clock& clock,
                           SunTimesOf sun_times, DeviceId id_of)
    : events_(events),
      house_(house),
      clock_(clock),
      sun_times_(std::move(sun_times)),
      id_of_(std::move(id_of)) {}

const Device* EventAnswers::device_of(const EventRecord& event) const {
  return house_.by_label(event.device_label());
}

EventAnswers::Planned EventAnswers::plan(const OffEvents::Entry& entry, Minute now,
                                         const SunTimesOf& sun_times) const {
  const EventRecord& event = entry.event;
  const PlannedEvent planned = plan_of(event, house_, now, sun_times);
  const Device* device = device_of(event);
  const auto level = event.action == "on" ? event_level(event) : std::nullopt;
  Planned answer;
  if (entry.on) answer.next = planned.next;
  answer.on = entry.on;
  answer.json = Json::Object{{"id", event_id(event)},
                             {"device", device ? Json(id_of_(*device)) : Json()},
                             {"room", to_utf8(planned.room)},
                             {"device_name", to_utf8(planned.face.device)},
                             {"address", to_utf8(event.housecode + event.unit)},
                             {"action", event.action == "on" ? "on" : "off"},
                             {"level", level ? Json(*level) : Json()},
                             {"clock", clock_of(planned.face)},
                             {"time", time_of(event)},
                             {"days", days_of(event)},
                             {"once", event.freq == "once"},
                             {"enabled", entry.on},
                             {"next", moment_of(answer.next)},
                             {"text", to_utf8(planned.face.device + " " + planned.face.action)},
                             {"detail", to_utf8(planned.face.detail)},
                             {"warning", to_utf8(planned.face.warning)}};
  return answer;
}

std::optional<std::vector<EventAnswers::Planned>> EventAnswers::planned() const {
  const auto entries = events_.all();
  if (!entries) return std::nullopt;
  const Minute now = minute_of(clock_.local_time());
  const SunTimesOf sun_times = remembered(sun_times_);
  std::vector<Planned> planned;
  planned.reserve(entries->size());
  for (const OffEvents::Entry& entry : *entries) planned.push_back(plan(entry, now, sun_times));
  std::stable_sort(planned.begin(), planned.end(), [](const Planned& a, const Planned& b) {
    if (a.on != b.on) return a.on;
    if (a.next.has_value() != b.next.has_value()) return a.next.has_value();
    return a.next < b.next;
  });
  return planned;
}

std::optional<Json::Array> EventAnswers::all() const {
  auto events = planned();
  if (!events) return std::nullopt;
  Json::Array answers;
  answers.reserve(events->size());
  for (Planned& event : *events) answers.push_back(std::move(event.json));
  return answers;
}

Json::Array EventAnswers::next(std::size_t at_most) const {
  Json::Array answers;
  auto events = planned();
  if (!events) return answers;
  for (Planned& event : *events)
    if (event.next && answers.size() < at_most) answers.push_back(std::move(event.json));
  return answers;
}

std::optional<OffEvents::Entry> EventAnswers::find(std::string_view id) const {
  auto entries = events_.all();
  if (!entries) return std::nullopt;
  for (OffEvents::Entry& entry : *entries)
    if (event_id(entry.event) == id) return std::move(entry);
  return std::nullopt;
}

Json EventAnswers::json_of(const OffEvents::Entry& entry) const {
  return plan(entry, minute_of(clock_.local_time()), sun_times_).json;
}

}  // namespace homewarden
