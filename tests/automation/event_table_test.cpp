// The event list's lines, due times and editor input, case by case.

#include <gmock/gmock.h>

#include "automation/due_time.h"
#include "automation/event_input.h"
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

TEST(DueTime, EveryDayHasItsLetter) {
  std::string letters;
  const Minute monday = minute_of(LocalTime{2023, 6, 19, 23, 59});
  for (int day = 0; day < 7; ++day)
    letters += weekday_letter(monday + std::chrono::hours(24 * day));
  EXPECT_EQ(letters, "mtwufsr");
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

TEST(EventInput, LabelsComeApart) {
  struct Case {
    const char* label;
    const char* device;
    const char* house;
    int unit;
  };
  for (const Case& c : {Case{"Hall Fan C12", "Hall Fan", "C", 12},
                        {"Hall Fan C2", "Hall Fan", "C", 2},
                        {"A3", "", "A", 3},
                        {"", "", "", 0},
                        {"Lamp", "L", "a", 0},
                        {"Odd  Lamp   P16", "Odd  Lamp", "P", 16}}) {
    const LabelParts parts = split_label(c.label);
    EXPECT_EQ(parts.roomdevice, c.device) << c.label;
    EXPECT_EQ(parts.housecode, c.house) << c.label;
    EXPECT_EQ(parts.unit, c.unit) << c.label;
  }
}

// "" when the input is refused.
std::string line_of(const EventInput& input, const std::optional<EventRecord>& edited = {}) {
  const std::vector<std::string> devices = {"Hall Fan C12", "Hall Lamp A3", "Attic Odd Q3"};
  const auto checked = check_input(input, devices, edited);
  const auto* event = std::get_if<EventRecord>(&checked);
  return event ? event->key() : "";
}

TEST(EventInput, IsWrittenAsTheFileWantsIt) {
  const std::array<bool, 7> all{true, true, true, true, true, true, true};
  const EventInput on{"Hall Lamp A3", "on", "40%", "07", "30", "daily", all};
  EXPECT_EQ(line_of(on), "Hall Lamp~A~3~40~07:30~on~daily~mtwufsr");
  EventInput off = on;
  off.action = "off";
  off.dim = "rubbish that nobody sees";
  EXPECT_EQ(line_of(off), "Hall Lamp~A~3~ ~07:30~off~daily~mtwufsr");
  EventInput typed{"Hall Fan C12", "On", "15", "7", "5", "Once", {}};
  typed.days[4] = typed.days[6] = true;
  EXPECT_EQ(line_of(typed), "Hall Fan~C~12~15~07:05~on~once~fr");
  EventInput sun = on;
  sun.hour = "SSET";
  for (const auto& [minute, written] : std::vector<std::pair<std::string, std::string>>{
           {"-1", "-1"}, {"00", "00"}, {"+3", "+3"}, {"2", "+2"}, {"0", "00"}}) {
    sun.minute = minute;
    EXPECT_EQ(line_of(sun), "Hall Lamp~A~3~40~sSet:" + written + "~on~daily~mtwufsr");
  }
}

TEST(EventInput, WhatIsNoEventIsRefusedWithAReason) {
  const EventInput good{"Hall Lamp A3", "on", "40%", "07", "30", "daily", {}};
  struct Case {
    std::string EventInput::*field;
    const char* value;
    const char* reason;
  };
  for (const Case& c : {Case{&EventInput::device, "", "choose a device"},
                        {&EventInput::device, "Hall Lump A3", "no device \"Hall Lump A3\""},
                        {&EventInput::device, "Attic Odd Q3", "no address"},
                        {&EventInput::action, "dim", "\"on\" or \"off\""},
                        {&EventInput::dim, "500%", "dim level"},
                        {&EventInput::dim, "", "dim level"},
                        {&EventInput::hour, "24", "an hour from 00 to 23"},
                        {&EventInput::hour, "", "an hour"},
                        {&EventInput::hour, "sRaise", "an hour"},
                        {&EventInput::minute, "60", "a minute"},
                        {&EventInput::minute, "+1", "needs sRise or sSet"},
                        {&EventInput::freq, "weekly", "\"once\" or \"daily\""}}) {
    EventInput input = good;
    input.*c.field = c.value;
    const auto checked = check_input(input, {"Hall Lamp A3", "Attic Odd Q3"}, {});
    const auto* reason = std::get_if<std::string>(&checked);
    ASSERT_TRUE(reason) << c.value;
    EXPECT_THAT(*reason, HasSubstr(c.reason));
  }
  EventInput sun = good;
  sun.hour = "sRise";
  EXPECT_EQ(line_of(sun), "") << "30 hours after sunrise";

  EventInput gone = good;
  gone.device = "Shed Lamp B1";
  EXPECT_EQ(line_of(gone), "");
  EXPECT_EQ(line_of(gone, parse_event("Shed Lamp~B~1~40~06:00~on~daily~m")),
            "Shed Lamp~B~1~40~07:30~on~daily~")
      << "an event of a device that is not listed any more cannot be edited";
}

}  // namespace
}  // namespace homewarden::testing
