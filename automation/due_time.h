#pragma once

#include <optional>
#include <string_view>

#include "automation/event_record.h"
#include "base/date.h"

namespace homewarden {

// The time of day at which an event is due, in minutes since midnight. A sun time plus its offset
// in hours wraps around midnight; an offset that is no number counts as 0. Nothing when `time` is
// no time, or when there is no sun time to count from.
std::optional<int> due_minute(std::string_view time, std::optional<Date> sunrise,
                              std::optional<Date> sunset);

// What a time counts from, as due_minute() reads it.
enum class Sun { kNone, kRise, kSet };
Sun sun_of(std::string_view time);

// The hours behind a sun time, as due_minute() reads them; 0 for what is no number. Other times
// have none.
int sun_offset(std::string_view time);

// The letter of the event list for the day of this minute: "mtwufs" from Monday, "r" on Sunday.
char weekday_letter(Minute minute);

// Whether the day of the minute is among the event's, whatever the case of its letters.
bool is_on_day(const EventRecord& event, Minute minute);

// The level that an "on" event sets, 0 to 100; nothing when the field is none.
std::optional<int> event_level(const EventRecord& event);

// What keeps an event that can be read from ever running, in words for a person; "" when nothing
// does.
std::string_view why_never_run(const EventRecord& event);

}  // namespace homewarden
