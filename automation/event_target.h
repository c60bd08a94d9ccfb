#pragma once

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

}  // namespace homewarden
