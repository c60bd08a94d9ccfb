// Which minutes a run looks at when the wall clock does what it likes.

#include "automation/checked_minutes.h"

#include <gmock/gmock.h>

#include <sstream>

#include "core/dates.h"

namespace homewarden::testing {
namespace {

// "12:01 12:02", a repeated minute in brackets, more than four as first..last(count).
std::string text_of(const std::vector<MinuteCheck>& minutes) {
  std::ostringstream text;
  if (minutes.size() > 4) {
    text << hh_mm(minutes.front().minute) << ".." << hh_mm(minutes.back().minute) << '('
         << minutes.size() << ')';
    return text.str();
  }
  for (const MinuteCheck& check : minutes) {
    if (text.tellp() > 0) text << ' ';
    text << (check.repeated ? "(" + hh_mm(check.minute) + ")" : hh_mm(check.minute));
  }
  return text.str();
}

// "12:01", or "+1 12:01" for the day after.
Minute minute_at(const std::string& time) {
  int day = 0;
  std::string clock = time;
  if (const auto blank = time.find(' '); blank != std::string::npos) {
    day = std::stoi(time);
    clock = time.substr(blank + 1);
  }
  return minute_of(LocalTime{2023, 6, 21 + day, std::stoi(clock), std::stoi(clock.substr(3))});
}

TEST(CheckedMinutes, EachRunLooksAtWhatNoOtherDid) {
  struct Case {
    const char* what;
    std::vector<std::pair<const char*, const char*>> runs;  // at, what is looked at
  };
  const Case cases[] = {
      {"runs on time", {{"12:00", "12:00"}, {"12:01", "12:01"}, {"12:02", "12:02"}}},
      {"a timer that is early or doubled", {{"12:00", "12:00"}, {"12:00", ""}, {"12:01", "12:01"}}},
      {"one lost", {{"12:00", "12:00"}, {"12:02", "12:01 12:02"}}},
      {"over midnight", {{"23:59", "23:59"}, {"+1 00:01", "00:00 00:01"}}},
      {"asleep for half an hour", {{"12:00", "12:00"}, {"12:30", "12:01..12:30(30)"}}},
      {"summer time begins", {{"01:59", "01:59"}, {"03:00", "02:00..03:00(61)"}}},
      {"asleep for a night: one hour is made good",
       {{"22:00", "22:00"}, {"+1 07:00", "06:00..07:00(61)"}, {"+1 07:01", "07:01"}}},
      {"summer time ends",
       {{"02:00", "02:00"},
        {"02:59", "02:01..02:59(59)"},
        {"02:00", "(02:00)"},
        {"02:01", "(02:01)"},
        {"02:59", "(02:59)"},
        {"03:00", "03:00"}}},
      {"set back by a little, twice",
       {{"12:05", "12:05"},
        {"12:06", "12:06"},
        {"12:05", "(12:05)"},
        {"12:06", "(12:06)"},
        {"12:05", "(12:05)"},
        {"12:07", "12:07"}}},
      {"started with a clock that was eight hours fast: nothing before has run",
       {{"20:00", "20:00"}, {"12:00", "12:00"}, {"12:01", "12:01"}, {"12:59", "12:02..12:59(58)"}}},
      {"what a long jump left out has not run either",
       {{"08:00", "08:00"},
        {"20:00", "19:00..20:00(61)"},
        {"12:00", "12:00"},
        {"08:00", "(08:00)"}}},
      {"set back by more than a day: another date",
       {{"+5 12:00", "12:00"}, {"+3 12:00", "12:00"}, {"+3 12:01", "12:01"}}},
  };
  for (const Case& c : cases) {
    CheckedMinutes checked;
    for (const auto& [at, looked_at] : c.runs) {
      const Minute now = minute_at(at);
      EXPECT_EQ(text_of(minutes_to_check(checked, now)), looked_at) << c.what << ", at " << at;
      checked = with_checked(std::move(checked), now);
    }
  }
}

TEST(CheckedMinutes, RemembersADayAndNoMore) {
  CheckedMinutes checked;
  Minute now = minute_at("00:00");
  for (int run = 0; run < 50000; ++run) {
    now += std::chrono::minutes(run % 1000 == 999 ? 500 : 1);
    checked = with_checked(std::move(checked), now);
  }
  EXPECT_LE(checked.size(), 20u) << "grows for ever";
  for (const MinuteSpan& span : checked) EXPECT_LE(span.last - span.first, kRemembered);
  EXPECT_EQ(checked.back().last, now);
}

}  // namespace
}  // namespace homewarden::testing
