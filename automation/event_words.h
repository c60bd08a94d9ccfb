#pragma once

#include <string>
#include <string_view>

#include "automation/event_record.h"
#include "base/date.h"

namespace homewarden {

// What events do and when, in words for a person.

// "every day", "weekdays", "weekend", "Mondays", "Mon, Wed"; "never" when no day is among them.
std::string days_in_words(std::string_view days);

// "06:45", "sunset", "1 hour after sunrise", "2 hours before sunset"; what is no time as it is.
std::string time_in_words(std::string_view time);

// "on", "on at 40 %", "off".
std::string action_in_words(const EventRecord& event);

// "Weekdays at 06:45, Bedroom Bedside Lamp on at 40 %"; "Once, Saturday at sunset, ...". `device`
// is what it switches, as it is to be called.
std::string event_in_words(const EventRecord& event, std::string_view device);

// "in 22 min", "in 8 h", "tomorrow", "in 4 days".
std::string until_in_words(Minute when, Minute now);

// "today", "tonight" from 18:00, "tomorrow", "Saturday".
std::string day_in_words(Minute when, Minute now);

// "06:45".
std::string clock_in_words(Minute when);

}  // namespace homewarden
