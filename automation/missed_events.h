#pragma once

#include <functional>
#include <string>
#include <vector>

#include "automation/checked_minutes.h"
#include "automation/event_record.h"

namespace homewarden {

struct DueEvent {
  EventRecord event;
  Minute due;
};

// How late a missed event may still run: an On comes as a surprise, an Off does not.
inline constexpr std::chrono::minutes kLatestOn{60};
inline constexpr std::chrono::minutes kLatestOff{24 * 60};

// What becomes of events whose minute nobody looked at.
struct CatchUp {
  std::vector<DueEvent> to_run;    // by due time
  std::vector<DueEvent> gave_way;  // to a later one of the same device
  std::vector<DueEvent> too_late;
  std::vector<DueEvent> no_longer;  // once-events that were due on a day that is not theirs
  std::vector<DueEvent> not_sent;   // known when it was tried
};

using HadTurn = std::function<bool(const DueEvent&)>;

// Of each device only the last command counts, by due time and by the order of the list within a
// minute: it runs unless it is too late or has had its turn. `missed` is in the order of due times;
// `next`, what is due now, comes behind all of it.
CatchUp plan_catch_up(std::vector<DueEvent> missed, const std::vector<DueEvent>& next, Minute now,
                      const HadTurn& had_turn);

// Whether the event can run at all, and on the day of that minute.
bool runs_on_day(const DueEvent& due);

// "A12", the same for each way of writing an address.
std::string address_of(const EventRecord& event);

// "Hall Lamp on (07:30)", with the date when it is not that of now.
std::string text_of(const DueEvent& due, Minute now);

// The first three by name, and how many more there are.
std::string names_of(const std::vector<DueEvent>& events, Minute now);

// What was done and what was left out, in one line; "" when there was nothing. `reason` says why
// the minutes were missed, "which the clock skipped".
std::string text_of(const CatchUp& caught_up, MinuteSpan missed, Minute now,
                    const std::string& reason);

}  // namespace homewarden
