#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/event_record.h"
#include "automation/next_run.h"
#include "core/house_index.h"
#include "ui/event_face.h"

namespace homewarden {

// An event with what is to be known to put it into words and into order.
struct PlannedEvent {
  EventFace face;              // without its group and `until`
  std::optional<Minute> next;  // nothing for one that will not run
  std::string room;            // "" when the house does not have the device
};

// Why the event will not run as it stands, though it may look as if it did; "" when it will. A
// once-event is removed when its time comes, also on a day that is not its own.
std::string why_not_planned(const EventRecord& event, Minute now, const SunTimesOf& sun_times);

PlannedEvent plan_of(const EventRecord& event, const HouseIndex& house, Minute now,
                     const SunTimesOf& sun_times);

// By their next run, those that will not run behind the others, each under its day.
std::vector<EventFace> by_next_run(std::vector<PlannedEvent> events, Minute now);
// By the name of the device or the room, and by the next run within it.
std::vector<EventFace> by_device(std::vector<PlannedEvent> events, Minute now);
std::vector<EventFace> by_room(std::vector<PlannedEvent> events, Minute now);

// Whether every word of the filter stands in what is shown of the event, whatever its case.
bool lets_through(std::string_view filter, const EventFace& face);

}  // namespace homewarden
