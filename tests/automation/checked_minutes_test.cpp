// Which minutes a run finds missed when the wall clock does what it likes.

#include "automation/checked_minutes.h"

#include <gmock/gmock.h>

#include "core/dates.h"

namespace homewarden::testing {
namespace {

// "12:01", or "+1 12:01" for the day after, "-9000 12:01" for a clock that was never set.
Minute minute_at(const std::string& time) {
  const auto blank = time.find(' ');
  const int day = blank == std::string::npos ? 0 : std::stoi(time);
  const std::string clock = time.substr(blank == std::string::npos ? 0 : blank + 1);
  return minute_of(LocalTime{2023, 6, 21, std::stoi(clock), std::stoi(clock.substr(3))}) +
         std::chrono::days(day);
}

TEST(CheckedMinutes, WhatIsMissedIsWhatNoRunLookedAt) {
  struct Case {
    const char* what;
    std::vector<std::pair<const char*, const char*>> runs;  // at, what was missed before it
  };
  const Case cases[] = {
      {"runs on time, over midnight", {{"23:58", ""}, {"23:59", ""}, {"+1 00:00", ""}}},
      {"one lost", {{"12:00", ""}, {"12:02", "12:01..12:01"}, {"12:03", ""}}},
      {"a night, and three weeks",
       {{"22:00", ""}, {"+1 07:00", "22:01..06:59"}, {"+22 07:00", "07:01..06:59"}}},
      {"summer time begins and ends",
       {{"01:59", ""}, {"03:00", "02:00..02:59"}, {"03:01", ""}, {"02:01", ""}, {"02:02", ""}}},
      {"asleep in the repeated hour: a new event may lie in it",
       {{"02:00", ""}, {"02:59", "02:01..02:58"}, {"02:05", ""}, {"02:25", "02:06..02:24"}}},
      {"started eight hours fast: nothing before has run",
       {{"20:00", ""}, {"12:00", ""}, {"12:05", "12:01..12:04"}}},
      {"never set after a power cut, then right again",
       {{"07:29", ""}, {"-9000 00:00", ""}, {"-9000 00:01", ""}, {"07:40", "07:30..07:39"}}},
      {"years ahead for a while",
       {{"07:29", ""}, {"+5000 03:14", ""}, {"07:40", "07:30..07:39"}, {"07:41", ""}}},
      {"set back by two days, and on again when it was tried",
       {{"12:00", ""}, {"-2 07:29", ""}, {"-2 07:30", ""}, {"12:10", "07:31..12:09"}}},
      {"ahead of itself by two days for an hour and more: those days are yet to come",
       {{"12:00", ""},
        {"+2 12:01", "12:01..12:00"},
        {"12:10", "12:01..12:09"},
        {"13:10", "12:11..13:09"},
        {"+2 12:00", "13:11..11:59"}}},
  };
  for (const Case& c : cases) {
    CheckedMinutes checked;
    for (const auto& [at, expected] : c.runs) {
      const Minute now = minute_at(at);
      const auto missed = missed_before(checked, now);
      EXPECT_EQ(missed ? hh_mm(missed->first) + ".." + hh_mm(missed->last) : "", expected)
          << c.what << ", at " << at;
      checked = with_checked(std::move(checked), now);
      EXPECT_EQ(parse_checked(text_of(checked)), checked) << "not what is read from the disk";
    }
  }
}

TEST(CheckedMinutes, RemembersADayAndNoMore) {
  CheckedMinutes checked;
  Minute now = minute_at("00:00");
  for (int run = 0; run < 50000; ++run) {
    now += std::chrono::minutes(run % 1000 == 999 ? -500 : 1);
    checked = with_checked(std::move(checked), now);
    ASSERT_LE(checked.size(), 8u) << "grows for ever";
  }
  for (const MinuteSpan& span : checked) EXPECT_LE(span.last - span.first, std::chrono::days(1));
  for (const char* text :
       {"x", "2023-06-21 07:30/2023-06-21 07:2", "2023-13-21 07:30/2023-13-21 07:30",
        "2023-06-21 07:30/2023-06-20 07:30"})
    EXPECT_TRUE(parse_checked(text).empty()) << text;
}

}  // namespace
}  // namespace homewarden::testing
