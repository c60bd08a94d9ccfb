// The event list's lines and due times, case by case.

#include <gmock/gmock.h>

#include "automation/due_time.h"
#include "automation/event_list.h"
#include "automation/event_record.h"
#include "core/dates.h"

namespace homewarden::testing {
namespace {

using ::testing::HasSubstr;

Date at(int hour, int minute, int second = 0) {
  return date_of(LocalTime{2023, 6, 21, hour, minute, second});
}

TEST(EventRecord, LinesAndRowsAreTheSameEvent) {
  for (const std::string line :
       {"Kitchen Table Lamp~A~3~40~07:30~on~daily~mtwuf", "Porch Light~B~12~ ~sSet:+1~off~once~fs",
        "Lamp~A~3~40~07:30~on~daily~", "Lamp~A~03~~7:30~On~daily~m~w"}) {
    const auto event = parse_event(line);
    ASSERT_TRUE(event) << line;
    EXPECT_EQ(event->key(), line);
    EXPECT_EQ(event_in(row_of(*event)), *event) << line << ": cannot be found again from the list";
  }
  const auto off = parse_event("Porch Light~B~12~ ~sSet:+1~off~once~fs");
  EXPECT_EQ(row_of(*off),
            (ListView::Row{"Porch Light", "B", "12", " ", "sSet:+1", "off", "once", "fs"}));
  EXPECT_EQ(off->once_key(), "Porch Light~B~12~ ~sSet:+1~off~once");
}

TEST(EventRecord, WhatIsNoEventIsRefused) {
  for (const char* line : {"", "Lamp~A~3~40~07:30~on~daily", "Lamp~A~three~40~07:30~on~daily~m",
                           "Lamp~A~99999~40~07:30~on~daily~m", "Lamp~A~3~40%~07:30~on~daily~m",
                           "La\tmp~A~3~40~07:30~on~daily~m"})
    EXPECT_FALSE(parse_event(line)) << line;
  std::string monster = "~A~3~40~07:30~on~daily~m";
  monster.insert(0, 2000, 'x');
  EXPECT_FALSE(parse_event(monster));
}

TEST(DueTime, CountsFromTheClockOrTheSunAndWrapsAroundMidnight) {
  struct Case {
    const char* time;
    Date sunrise;
    Date sunset;
    const char* due;  // "" for none
  };
  const Case cases[] = {
      {"07:30", at(6, 5), at(18, 47), "07:30"},
      {"7:5", at(6, 5), at(18, 47), "07:05"},
      {"sSet:-1", at(6, 5), at(18, 47), "17:47"},
      {"sSet:00", at(6, 5), at(18, 47), "18:47"},
      {"sSet:+1", at(6, 5), at(18, 47), "19:47"},
      {"sRise:+3", at(6, 5), at(18, 47), "09:05"},
      {"SSET:+3", at(6, 5), at(22, 30), "01:30"},
      {"sRise:-3", at(2, 10), at(18, 47), "23:10"},
      {"sRise:30", at(6, 5), at(18, 47), "12:05"},
      {"24:00", at(6, 5), at(18, 47), ""},
      {"07:60", at(6, 5), at(18, 47), ""},
      {"0730", at(6, 5), at(18, 47), ""},
      {"", at(6, 5), at(18, 47), ""},
      {"sRise", at(6, 5), at(18, 47), ""},
      {"noon", at(6, 5), at(18, 47), ""},
      {"07:3o", at(6, 5), at(18, 47), ""},
      {"007:30", at(6, 5), at(18, 47), ""},
      {"sSet:00", at(6, 5), at(18, 47, 59), "18:47"},
  };
  for (const Case& c : cases) {
    const auto due = due_minute(c.time, c.sunrise, c.sunset);
    EXPECT_EQ(due ? hh_mm(*due) : "", c.due) << c.time;
  }
  EXPECT_FALSE(due_minute("sSet:00", std::nullopt, std::nullopt))
      << "an event ran at a sun time that nobody knows";
}

TEST(DueTime, NamesWhatKeepsAnEventFromRunning) {
  const auto why = [](const char* line) { return std::string(why_never_run(*parse_event(line))); };
  EXPECT_EQ(why("Lamp~a~3~40~sset:-1~on~daily~FS"), "") << "letter case keeps nothing from running";
  EXPECT_EQ(why("Lamp~A~3~ ~07:30~off~once~r"), "");
  EXPECT_THAT(why("Lamp~A~17~40~07:30~on~daily~m"), HasSubstr("address"));
  EXPECT_THAT(why("Lamp~A~3~40~25:30~on~daily~m"), HasSubstr("time"));
  EXPECT_THAT(why("Lamp~A~3~ ~07:30~on~daily~m"), HasSubstr("dim level"));
  EXPECT_THAT(why("Lamp~A~3~40~07:30~on~daily~"), HasSubstr("day of the week"));
}

}  // namespace
}  // namespace homewarden::testing
