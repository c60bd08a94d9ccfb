// Thirty days of a house that is restarted, killed, put to sleep and given wrong clocks: what is on
// the line is what should be, no more and no less.

#include <algorithm>
#include <random>

#include "tests/stories/event_house.h"
#include "tests/stories/event_model.h"

namespace homewarden::testing {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;

// The acts on the line; one that a kill cuts off stays open.
class WatchedLine : public FakeInterface {
 public:
  struct Act {
    std::string address;
    std::string order;
    bool open = true;
  };
  using FakeInterface::FakeInterface;

  Task<int> SendX10(std::string house, std::string unit, int function, double amount, int,
                    int) override {
    if (function == kX10On || function == kX10Off)
      acts.push_back({house + unit, function == kX10On ? "100" : "off"});
    if (function == kX10Dim) acts.back().order = std::to_string(100 - static_cast<int>(amount));
    acts.back().open = true;
    const int status = co_await FakeInterface::SendX10(house, unit, function, amount, 20, 50);
    acts.back().open = false;
    co_return status;
  }
  std::vector<Act> acts;
};

class Neglect : public ::testing::TestWithParam<unsigned> {
 protected:
  Neglect() : random(GetParam()), model(some_events()) {
    std::string list;
    for (const auto& event : model.events) list += event.line + "\r\n";
    list.insert(list.find('\n') + 1, "no event\r\nHall Lamp~Z~1~40~12:00~on~daily~mtwufsr\r\n");
    house.content("evelst.hwd") = list;
    line.status_of_port[2] = 0;
    line.mains_time = 400ms;
    house.connected = &line;
    house.loop.set_wall_clock(2023, 3, 13, 12, 0, 10);
  }

  int pick(int first, int last) { return std::uniform_int_distribution<>(first, last)(random); }

  // Fifty, on sixteen devices, some of them in the same minute; each order is one event's only.
  std::vector<EventModel::Event> some_events() {
    std::vector<EventModel::Event> events;
    std::vector<int> times;
    for (int i = 0; i < 25; ++i) times.push_back(i < 8 ? pick(60, 200) : pick(0, 1439));
    const char* const orders[] = {"off", "100", "40", "75"};
    for (int i = 0; i < 50; ++i) {
      EventModel::Event event;
      const std::string unit = std::to_string(i % 16 + 1);
      event.address = "A" + unit;
      event.order = orders[i / 16];
      event.is_once = i % 6 == 5;
      for (const char day : std::string("mtwufsr"))
        if (i % 3 == 0 || pick(0, 3) > 0) event.days += day;
      event.sun = i % 5 == 4 ? pick(1, 2) : 0;
      event.at = event.sun == 0 ? times[static_cast<std::size_t>(pick(0, 24))] : pick(-3, 3);
      std::string time = two_digits(event.at / 60) + ":" + two_digits(event.at % 60);
      if (event.sun != 0)
        time = std::string(event.sun == 1 ? "sRise:" : "sSet:") +
               (event.at == 0 ? "00" : (event.at < 0 ? "-" : "+") + std::to_string(abs(event.at)));
      event.line = "Room Lamp" + unit + "~A~" + unit + "~" +
                   (event.order == "off" ? " " : event.order) + "~" + time + "~" +
                   (event.order == "off" ? "off" : "on") + "~" +
                   (event.is_once ? "once~" : "daily~") + event.days;
      events.push_back(std::move(event));
    }
    std::shuffle(events.begin(), events.end(), random);
    return events;
  }

  Date wall() { return date_of(house.loop.local_time()); }
  void set_wall(Date time) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    house.loop.set_wall_clock(static_cast<int>(date.year()),
                              static_cast<int>(static_cast<unsigned>(date.month())),
                              static_cast<int>(static_cast<unsigned>(date.day())), 0, 0,
                              static_cast<int>((time - day).count()), pick(1, 999));
  }
  // Not so near to the end of a minute that two minutes could be meant.
  static Date clear_of_minute(Date time) {
    const auto second = time - std::chrono::floor<minutes>(time);
    return second > seconds(54) ? time + seconds(6) : time;
  }
  void look() { model.look(std::chrono::floor<minutes>(wall()), clock_is_right); }

  // Whatever is out must be meant to be; what is meant to be is out after two minutes.
  void compare() {
    while (!line.acts.empty() && !line.acts.front().open) {
      const auto act = line.acts.front();
      line.acts.erase(line.acts.begin());
      ASSERT_TRUE(model.carried_out(act.address, act.order))
          << act.address << " " << act.order << " at "
          << text_of(std::chrono::floor<minutes>(wall())) << " after " << history;
      ++commands;
    }
    if (model.owed().empty()) owing_since = house.loop.uptime();
    ASSERT_LT(house.loop.uptime() - owing_since, 120s) << model.owed() << " after " << history;
  }
  void run(milliseconds length) {
    const auto end = house.loop.uptime() + length;
    while (house.loop.uptime() < end && !HasFatalFailure()) {
      const LocalTime now = house.loop.local_time();
      const milliseconds to_minute(60000 - now.second * 1000 - now.millisecond);
      const bool whole = house.loop.uptime() + to_minute <= end;
      house.loop.advance(whole ? to_minute : end - house.loop.uptime());
      compare();
      if (whole) look();
    }
  }
  void start() {
    set_wall(clear_of_minute(wall()));
    house.loop.start_again();
    house.open();
    owing_since = house.loop.uptime();
    // A kill or a jump may come before the program has looked at its clock.
    cut_short = pick(0, 9) == 0;
    if (cut_short) {
      house.loop.advance(milliseconds(pick(1, 900)));
    } else {
      look();
      run(5s);
    }
  }
  // Into the middle of a command, or the time until a once-event is removed behind it.
  void run_until_busy() {
    for (int i = 0; i < 240 && model.owed().empty() && !HasFatalFailure(); ++i)
      run(milliseconds(60001 - house.loop.local_time().second * 1000 -
                       house.loop.local_time().millisecond));
    house.loop.advance(milliseconds(pick(1, pick(0, 1) == 0 ? 2500 : 12000)));
  }
  void stop(bool kill) {
    if (kill && !cut_short && pick(0, 2) > 0) run_until_busy();
    if (!kill) {
      house.close();
      ASSERT_TRUE(house.loop.advance_until([this] { return house.loop.has_quit(); }, 60s) ||
                  house.loop.has_quit());
      compare();
    }
    house.forget_program();
    if (!line.acts.empty() && line.acts.back().open) line.acts.pop_back();
    compare();
    model.end(clock_is_right);
  }
  void jump_to(Date time) {
    cut_short = false;
    set_wall(clear_of_minute(time));
    latest = std::max(latest, wall());
    look();
    run(milliseconds(pick(1500, 4000)));
  }
  milliseconds some_time(int longest_hours) {
    const int kind = pick(0, 2);
    if (kind == 0) return milliseconds(pick(3000, 200000));
    return kind == 1 ? milliseconds(minutes(pick(1, 90))) + milliseconds(pick(0, 60000))
                     : milliseconds(minutes(pick(60, longest_hours * 60)));
  }
  void something_happens() {
    const int what = pick(0, 9);
    history = history.substr(history.size() - std::min<std::size_t>(history.size(), 90)) + ", " +
              std::to_string(what) + " at " + text_of(std::chrono::floor<minutes>(wall()));
    if (what < 4) {
      stop(what < 2);
      const bool unset = pick(0, 5) == 0;  // the clock stood still with the power
      house.loop.advance(some_time(30));
      const Date right = wall();
      if (unset) {
        clock_is_right = false;
        set_wall(Date(std::chrono::local_days(std::chrono::year(1970) / 1 / 1)));
      }
      start();
      if (!unset) return;
      clock_is_right = true;
      jump_to(right + seconds(30));
    } else if (what < 6) {
      jump_to(wall() + std::chrono::floor<seconds>(some_time(26)));  // asleep
    } else if (what == 6) {
      jump_to(wall() + hours(1));
    } else if (what < 9) {
      const Date back = wall() - (what == 7 ? seconds(hours(1)) : seconds(pick(5, 7200)));
      jump_to(latest - back < minutes(150) ? back : wall() + seconds(5));
    } else {
      const Date right = wall();
      clock_is_right = false;
      jump_to(right + hours(24 * 365 * ++wrong_years));
      run(some_time(1) / 4);
      clock_is_right = true;
      jump_to(right + minutes(pick(1, 40)));
    }
  }

  std::mt19937 random;
  EventHouse house;
  WatchedLine line{house.loop};
  EventModel model;
  bool clock_is_right = true;
  bool cut_short = false;
  int wrong_years = 10;
  milliseconds owing_since{0};
  Date latest;
  std::string history;
  int commands = 0;
};

TEST_P(Neglect, ThirtyDaysOfEventsAreAsTheyShouldBe) {
  const Date end = wall() + std::chrono::days(30);
  model.begin(std::chrono::floor<minutes>(wall()));
  start();
  while (wall() < end && !HasFatalFailure()) {
    if (!cut_short) run(some_time(8));
    latest = std::max(latest, wall());
    if (!HasFatalFailure()) something_happens();
  }
  if (HasFatalFailure()) return;
  if (cut_short) look();
  run(3min);
  EXPECT_GT(commands, 300);
  std::vector<std::string> left = house.event_lines();
  std::erase_if(left,
                [](const std::string& text) { return text.find("~A~") == std::string::npos; });
  EXPECT_EQ(left, model.lines()) << "once-events that have come due, and no others, are gone";
}

INSTANTIATE_TEST_SUITE_P(Seeds, Neglect, ::testing::Range(1u, 4u));

}  // namespace
}  // namespace homewarden::testing
