#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "automation/event_record.h"
#include "base/date.h"
#include "ui/shared_state.h"

namespace homewarden {

using SunTimesOf = std::function<SunTimes(std::chrono::local_days)>;

// The same, asking for each day once. To be made anew when the place or the daylight saving is
// another.
SunTimesOf remembered(SunTimesOf sun_times);

// The next minute after `now` at which the event's time comes, whatever its days: today, tomorrow,
// or a day further on when the sun of a day is not known. Nothing for what is no time.
std::optional<Minute> next_due(const EventRecord& event, Minute now, const SunTimesOf& sun_times);

// The next minute after `now` at which the event switches, within the next eight days, each with
// its own sun times. Nothing for an event that never runs, or whose sun time is not known; nothing
// for a once-event whose time comes on a day that is not its own first: it is removed then.
std::optional<Minute> next_run(const EventRecord& event, Minute now, const SunTimesOf& sun_times);

}  // namespace homewarden
