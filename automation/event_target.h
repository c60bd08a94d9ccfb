#pragma once

#include <optional>

#include "automation/due_time.h"
#include "automation/event_record.h"
#include "base/text.h"
#include "x10/device_commands.h"

namespace homewarden {

// What an event switches. Its outcome is recorded under the name that stands in the event, whether
// or not the house has a device of that name. The unit is 0, which no device has, when the event's
// is no number.
inline SwitchTarget target_of(const EventRecord& event) {
  return {event.housecode, to_integer16(event.unit).value_or(0), without_blanks(event.roomdevice)};
}

// What an event tells it when somebody asks for it now; nothing when its action or its level is
// none.
inline std::optional<DeviceOrder> order_of(const EventRecord& event) {
  if (event.action == "off") return DeviceOrder{false};
  const auto level = event.action == "on" ? event_level(event) : std::nullopt;
  return level ? std::optional(DeviceOrder{true, *level}) : std::nullopt;
}

}  // namespace homewarden
