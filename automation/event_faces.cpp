#include "automation/event_faces.h"

#include <algorithm>
#include <utility>

#include "automation/due_time.h"
#include "automation/event_effect.h"
#include "automation/event_words.h"
#include "base/text.h"
#include "core/dates.h"
#include "ui/controls.h"

namespace homewarden {
namespace {

const char* const kNotPlanned = "Will not run";

EventFace::Clock clock_of(std::string_view time) {
  switch (sun_of(time)) {
    case Sun::kRise:
      return EventFace::Clock::kSunrise;
    case Sun::kSet:
      return EventFace::Clock::kSunset;
    case Sun::kNone:
      break;
  }
  return EventFace::Clock::kTime;
}

const Device* device_of(const EventRecord& event, const HouseIndex& house) {
  const Device* device = house.by_label(event.device_label());
  return device ? device : house.by_room_and_name(event.roomdevice);
}

bool runs_before(const PlannedEvent& a, const PlannedEvent& b) {
  if (a.next.has_value() != b.next.has_value()) return a.next.has_value();
  return a.next < b.next;
}

template <class Group>
std::vector<EventFace> grouped(std::vector<PlannedEvent> events, Minute now, Group group_of) {
  std::stable_sort(events.begin(), events.end(), runs_before);
  std::vector<EventFace> faces;
  faces.reserve(events.size());
  for (PlannedEvent& event : events) {
    event.face.group = group_of(event);
    event.face.until = event.next ? until_in_words(*event.next, now) : "";
    faces.push_back(std::move(event.face));
  }
  std::stable_sort(faces.begin(), faces.end(), [](const EventFace& a, const EventFace& b) {
    return sorts_before(a.group, b.group);
  });
  return faces;
}

}  // namespace

std::string why_not_planned(const EventRecord& event, Minute now, const SunTimesOf& sun_times) {
  const std::string_view why = why_never_run(event);
  if (!why.empty()) return "This event never runs: " + std::string(why) + ".";
  const auto due = next_due(event, now, sun_times);
  if (!due) return "It waits for a sun time: choose your city in the settings.";
  if (next_run(event, now, sun_times)) return "";
  return "It goes " + day_in_words(*due, now) + " at " + clock_in_words(*due) +
         " without having run: \"once\" is the next time, and that day is not chosen.";
}

PlannedEvent plan_of(const EventRecord& event, const HouseIndex& house, Minute now,
                     const SunTimesOf& sun_times) {
  PlannedEvent planned;
  const Device* device = device_of(event, house);
  if (device) planned.room = device->room;
  planned.next = next_run(event, now, sun_times);
  EventFace& face = planned.face;
  const auto due = planned.next ? planned.next : next_due(event, now, sun_times);
  if (due) face.time = clock_in_words(*due);
  face.clock = clock_of(event.time);
  face.on = event.action == "on";
  face.device = device ? device->name : event.roomdevice;
  face.action = action_in_words(event);
  const std::string occasion = occasion_in_words(event);
  face.detail = planned.room.empty() ? capitalised(occasion) : planned.room + ", " + occasion;
  if (!due && !event.time.empty() && face.clock == EventFace::Clock::kTime)
    face.detail += " at " + event.time;
  if (!planned.next) face.warning = why_not_planned(event, now, sun_times);
  if (face.warning.empty()) face.warning = what_is_wrong_with(event, house);
  return planned;
}

std::vector<EventFace> by_next_run(std::vector<PlannedEvent> events, Minute now) {
  std::stable_sort(events.begin(), events.end(), runs_before);
  std::vector<EventFace> faces;
  faces.reserve(events.size());
  for (PlannedEvent& event : events) {
    EventFace& face = event.face;
    face.group = kNotPlanned;
    if (event.next) {
      const auto day = std::chrono::floor<std::chrono::days>(*event.next);
      face.group = capitalised(day_in_words(day, now));  // today, also for what comes tonight
      face.until = until_in_words(*event.next, now);
      if (face.until == "tomorrow") face.until.clear();
    }
    faces.push_back(std::move(face));
  }
  return faces;
}

std::vector<EventFace> by_device(std::vector<PlannedEvent> events, Minute now) {
  return grouped(std::move(events), now,
                 [](const PlannedEvent& event) { return event.face.device; });
}

std::vector<EventFace> by_room(std::vector<PlannedEvent> events, Minute now) {
  return grouped(std::move(events), now, [](const PlannedEvent& event) {
    return event.room.empty() ? "No room" : event.room;
  });
}

bool lets_through(std::string_view filter, const EventFace& face) {
  const std::string words = face.time + " " + face.device + " " + face.action + " " + face.detail +
                            " " + face.group + " " + face.warning;
  while (!filter.empty()) {
    const auto end = std::min(filter.find(' '), filter.size());
    if (!contains_ignoring_case(words, filter.substr(0, end))) return false;
    filter.remove_prefix(std::min(end + 1, filter.size()));
  }
  return true;
}

}  // namespace homewarden
