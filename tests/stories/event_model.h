#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/dates.h"
#include "sun/sunrise.h"

namespace homewarden::testing {

// What should have happened, said as simply as it can be: every minute of a gap and every event of
// it are looked at one by one.
class EventModel {
 public:
  struct Event {
    std::string line;
    std::string address;
    std::string order;  // "off" or the level
    std::string days;
    int at = 0;   // minute of the day, or the hours behind a sun time
    int sun = 0;  // 1 sunrise, 2 sunset
    bool is_once = false;
  };
  explicit EventModel(std::vector<Event> list) : events(std::move(list)) {}

  // The very first start: what was before is nobody's.
  void begin(Minute now) { shown_ = last_right_ = now; }

  // The program looks at its clock; `is_right` is false while that shows nonsense.
  void look(Minute now, bool is_right) {
    if (now == shown_) return;
    Look look{last_right_, {}, {}};
    std::vector<Turn> missed;
    if (is_right && last_right_)
      for (Minute m = std::max(*last_right_ + std::chrono::minutes(1), now - std::chrono::days(1));
           m < now; m += std::chrono::minutes(1))
        for (const Event* event : due_at(m)) missed.push_back({event, m, true});
    const auto next = due_at(now);
    std::map<std::string, std::string> last;  // of each device
    for (const Turn& turn : missed)
      if (is_its_day(turn)) last[turn.event->address] = name_of(turn);
    for (const Event* event : next)
      if (is_its_day({event, now})) last[event->address] = name_of({event, now});
    for (const Turn& turn : missed) {
      if (turn.event->is_once) look.gone.insert(turn.event->line);
      if (!is_its_day(turn) || had_turn(turn)) continue;
      const auto late = now - turn.due;
      const bool is_off = turn.event->order == "off";
      if (last[turn.event->address] != name_of(turn))
        turns_.insert(name_of(turn));
      else if (late <= std::chrono::hours(is_off ? 24 : 1))
        expect(look, turn);
    }
    for (const Event* event : next) {
      if (event->is_once) look.gone.insert(event->line);
      if (is_its_day({event, now}) && !had_turn({event, now})) expect(look, {event, now});
    }
    shown_ = now;
    if (is_right) last_right_ = now;
    looks_.push_back(std::move(look));
    settle();
  }

  // A command is out. False when there should be none such.
  bool carried_out(const std::string& address, const std::string& order) {
    for (Look& look : looks_)
      for (auto turn = look.expected.begin(); turn != look.expected.end(); ++turn)
        if (turn->event->address == address && turn->event->order == order) {
          look.expected.erase(turn);
          settle();
          return true;
        }
    return false;
  }

  // What should have been on the line and was not; "" when there is nothing.
  std::string owed() const {
    std::string text;
    for (const Look& look : looks_)
      for (const Turn& turn : look.expected)
        if (!turn.may_give_way) text += turn.event->line + " at " + text_of(turn.due) + "\n";
    return text;
  }

  // The program ends, or is killed: what it has not done is still to be done.
  void end(bool is_right) {
    if (is_right && !looks_.empty()) last_right_ = looks_.front().right_before;
    for (const Look& look : looks_)
      for (const Turn& turn : look.expected) turns_.erase(name_of(turn));
    if (!looks_.empty()) shown_.reset();
    looks_.clear();
  }

  std::vector<std::string> lines() const {
    std::vector<std::string> all;
    for (const Event& event : events)
      if (!gone_.contains(event.line)) all.push_back(event.line);
    return all;
  }

  const std::vector<Event> events;

 private:
  struct Turn {
    const Event* event;
    Minute due;
    bool made_good = false;
    bool may_give_way = false;
  };
  struct Look {
    std::optional<Minute> right_before;
    std::vector<Turn> expected;
    std::set<std::string> gone;
  };

  static std::string name_of(const Turn& turn) {
    return turn.event->line + text_of(std::chrono::floor<std::chrono::days>(turn.due));
  }
  bool had_turn(const Turn& turn) const { return turns_.contains(name_of(turn)); }
  void expect(Look& look, Turn turn) {
    turns_.insert(name_of(turn));
    for (Look& before : looks_)  // what is still being made good gives way
      for (Turn& older : before.expected)
        if (older.made_good && older.event->address == turn.event->address)
          older.may_give_way = true;
    look.expected.push_back(turn);
  }
  static bool is_its_day(const Turn& turn) {
    const std::chrono::weekday day(std::chrono::floor<std::chrono::days>(turn.due));
    static const char* const kLetters[] = {"r", "m", "t", "w", "u", "f", "s"};
    return turn.event->days.find(kLetters[day.c_encoding()]) != std::string::npos;
  }
  std::vector<const Event*> due_at(Minute minute) {
    const auto day = std::chrono::floor<std::chrono::days>(minute);
    auto& times = due_[day];
    if (times.empty()) {
      clsSunrise sun{Date(day)};
      sun.Latitude(51.3);
      sun.Longitude(0.1);
      sun.CalculateSun(0);
      for (const Event& event : events) {
        const Date from = event.sun == 1 ? sun.sunrise() : sun.sunset();
        const int at = event.sun == 0 ? event.at
                                      : minute_of_day(std::chrono::floor<std::chrono::minutes>(
                                            from + std::chrono::hours(event.at)));
        times[at].push_back(&event);
      }
    }
    std::vector<const Event*> found = times[minute_of_day(minute)];
    std::erase_if(found, [this](const Event* event) { return gone_.contains(event->line); });
    return found;
  }
  // A look is over when all of it is out; its once-events are then gone.
  void settle() {
    std::erase_if(looks_, [this](Look& look) {
      if (!look.expected.empty()) return false;
      gone_.insert(look.gone.begin(), look.gone.end());
      return true;
    });
  }

  std::optional<Minute> shown_;
  std::optional<Minute> last_right_;
  std::vector<Look> looks_;  // with something on its way
  std::set<std::string> turns_;
  std::set<std::string> gone_;
  std::map<std::chrono::local_days, std::map<int, std::vector<const Event*>>> due_;
};

}  // namespace homewarden::testing
