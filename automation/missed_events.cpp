#include "automation/missed_events.h"

#include <algorithm>
#include <map>
#include <utility>

#include "automation/due_time.h"
#include "base/text.h"
#include "core/dates.h"

namespace homewarden {
namespace {

std::string time_of(Minute minute, Minute now) {
  using std::chrono::days;
  using std::chrono::floor;
  return floor<days>(minute) == floor<days>(now) ? hh_mm(minute) : text_of(minute);
}

bool is_too_late(const DueEvent& due, Minute now) {
  return now - due.due > (due.event.action == "on" ? kLatestOn : kLatestOff);
}

}  // namespace

CatchUp plan_catch_up(std::vector<DueEvent> missed, const std::vector<DueEvent>& next, Minute now,
                      const HadTurn& had_turn) {
  std::map<std::string, const DueEvent*> last;
  for (const DueEvent& due : missed)
    if (runs_on_day(due)) last[address_of(due.event)] = &due;
  for (const DueEvent& due : next)
    if (runs_on_day(due)) last[address_of(due.event)] = &due;

  CatchUp plan;
  for (DueEvent& due : missed) {
    const bool runs = runs_on_day(due);
    if (!runs && due.event.freq == "once") {
      plan.no_longer.push_back(std::move(due));
    } else if (runs && !had_turn(due)) {
      const bool is_last = last[address_of(due.event)] == &due;
      const bool late = is_too_late(due, now);
      (!is_last ? plan.gave_way : late ? plan.too_late : plan.to_run).push_back(std::move(due));
    }
  }
  return plan;
}

bool runs_on_day(const DueEvent& due) {
  return is_on_day(due.event, due.due) && why_never_run(due.event).empty();
}

std::string address_of(const EventRecord& event) {
  return to_lower(event.housecode) + std::to_string(to_integer16(event.unit).value_or(0));
}

std::string text_of(const DueEvent& due, Minute now) {
  return due.event.roomdevice + (due.event.action == "on" ? " on (" : " off (") +
         time_of(due.due, now) + ")";
}

std::string names_of(const std::vector<DueEvent>& events, Minute now) {
  constexpr std::size_t kNamed = 3;
  std::string text;
  for (std::size_t i = 0; i < std::min(events.size(), kNamed); ++i)
    text += (i == 0 ? "" : ", ") + text_of(events[i], now);
  if (events.size() > kNamed) text += " and " + std::to_string(events.size() - kNamed) + " more";
  return text;
}

std::string text_of(const CatchUp& caught_up, MinuteSpan missed, Minute now,
                    const std::string& reason) {
  const std::pair<const std::vector<DueEvent>*, const char*> left_out[] = {
      {&caught_up.gave_way, "followed by a later one"},
      {&caught_up.too_late, "too late"},
      {&caught_up.no_longer, "not due on that day"},
      {&caught_up.not_sent, "could not be sent"}};
  std::string reasons;
  for (const auto& [events, why] : left_out)
    if (!events->empty())
      reasons += (reasons.empty() ? ". Left out: " : "; ") + names_of(*events, now) + ", " + why;
  const std::size_t done = caught_up.to_run.size();
  if (done == 0 && reasons.empty()) return "";
  return "Caught up on " + std::to_string(done) + (done == 1 ? " event" : " events") +
         " of the time from " + time_of(missed.first, now) + " to " + time_of(missed.last, now) +
         ", " + reason + (done == 0 ? "" : ": " + names_of(caught_up.to_run, now)) + reasons;
}

}  // namespace homewarden
