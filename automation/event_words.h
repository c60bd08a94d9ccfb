#pragma once

#include <string>
#include <string_view>

#include "automation/event_record.h"
#include "base/date.h"

namespace homewarden {

// What events do and when, in words for a person.

// The text with a capital letter in front.
std::string capitalised(std::string text);

// "every day", "weekdays", "weekend", "Mondays", "Mon, Wed"; "on no day" when none is among them.
std::string days_in_words(std::string_view days);

// "06:45", "sunset", "1 hour after sunrise", "2 hours before sunset"; what is no time as it is, "no
// time" when there is nothing.
std::string time_in_words(std::string_view time);

// "on", "on at 40 %" with a no-break space, "off". A level that is none is left out.
std::string action_in_words(const EventRecord& event);

// "Weekdays at 06:45, Bedroom Bedside Lamp on at 40 %"; "Once, on Saturday at sunset, ...".
// `device` is what it switches, as it is to be called.
std::string event_in_words(const EventRecord& event, std::string_view device);

// What goes beside the time: "weekdays", "every day at sunset", "once, on Saturday, 1 hour after
// sunrise".
std::string occasion_in_words(const EventRecord& event);

// "now", "in 22 min", "in 8 h", "tomorrow", "in 4 days".
std::string until_in_words(Minute when, Minute now);

// "today", "tonight" from 18:00, "tomorrow", "Saturday", "Saturday next week".
std::string day_in_words(Minute when, Minute now);

// "06:45".
std::string clock_in_words(Minute when);

}  // namespace homewarden
