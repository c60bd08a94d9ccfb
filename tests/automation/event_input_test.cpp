// What a person puts into the event editor, case by case.

#include "automation/event_input.h"

#include <gmock/gmock.h>

namespace homewarden::testing {
namespace {

using ::testing::HasSubstr;

TEST(EventInput, LabelsComeApart) {
  const auto parts = split_label("Odd  Lamp   P16 ");
  ASSERT_TRUE(parts);
  EXPECT_EQ(parts->roomdevice + parts->housecode, "Odd  LampP");
  EXPECT_EQ(parts->unit, 16);
  for (const char* label : {"", " ", "Lamp", "Hall Lamp12", "Lamp A", "Lamp A0", "Lamp A17",
                            "Lamp Q3", "Lamp A+3", "Lamp A003", "Lamp 3A"})
    EXPECT_FALSE(split_label(label)) << label << ": some other lamp would be switched";
}

// "" when the input is refused.
std::string line_of(const EventInput& input) {
  const auto checked = check_input(input);
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
  for (const Case& c : {Case{&EventInput::device, " ", "choose a device"},
                        {&EventInput::device, "Hall Lump", "\"Hall Lump\" has no address"},
                        {&EventInput::device, "A3", "an address without a name"},
                        {&EventInput::device, "Hall~Lamp A3", "tilde"},
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
    const auto checked = check_input(input);
    const auto* reason = std::get_if<std::string>(&checked);
    ASSERT_TRUE(reason) << c.value;
    EXPECT_THAT(*reason, HasSubstr(c.reason));
  }
  EventInput sun = good;
  sun.hour = "sRise";
  EXPECT_EQ(line_of(sun), "") << "30 hours after sunrise";

  EventInput unlisted = good;
  unlisted.device = "Shed Lamp b1";
  EXPECT_EQ(line_of(unlisted), "Shed Lamp~B~1~40~07:30~on~daily~")
      << "a device that is in no list cannot be switched";
}

}  // namespace
}  // namespace homewarden::testing
