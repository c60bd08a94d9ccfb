#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "automation/event_record.h"
#include "base/date.h"
#include "ui/shared_state.h"

namespace homewarden {

using SunTimesOf = std::function<SunTimes(std::chrono::local_days)>;

// The next minute after `now` at which the event is due, within the next eight days, each with its
// own sun times. Nothing for an event that never runs, or whose sun time is not known.
std::optional<Minute> next_run(const EventRecord& event, Minute now, const SunTimesOf& sun_times);

}  // namespace homewarden
