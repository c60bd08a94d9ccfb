#pragma once

#include <string>

#include "automation/event_record.h"
#include "automation/macro_line.h"
#include "core/house_index.h"

namespace homewarden {

// Why a line of the event list or the macro list does nothing, or not what its names say: an event
// that never runs, a device that is not in the house or has another address there. A sentence for
// a person; "" when nothing is wrong with it.
std::string what_is_wrong_with(const EventRecord& event, const HouseIndex& house);
std::string what_is_wrong_with(const Macro& macro, const HouseIndex& house);

}  // namespace homewarden
