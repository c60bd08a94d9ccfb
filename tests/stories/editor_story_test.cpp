// Events written and changed by a person.

#include <algorithm>

#include "tests/stories/event_house.h"

namespace homewarden::testing {
namespace {

const char* const kPorch = "Hall Lamp~B~12~ ~sSet:+1~off~once~fs";
const char* const kMorning = "Kitchen Table Lamp~A~3~40~07:30~on~daily~mtwuf";

// Editing the selected event as a person does.
void edit(EventHouse& house, const std::string& device) {
  ASSERT_TRUE(house.select_event(device));
  house.form().ListView1.double_click();
}

TEST(EditorStory, SunsetMinusOneHourOnFridays) {
  EventHouse house;
  FrmMain& form = house.open_connected_at(14, 5, 0);
  form.Label5.click();
  EXPECT_TRUE(form.frm_event.visible);
  EXPECT_TRUE(form.lab_noevents.visible);
  form.Command5.click();
  EXPECT_EQ(form.lst_hour.text.get() + ":" + form.lst_min.text.get(), "14:05");
  EXPECT_EQ(form.lst_action.text.get() + form.lst_dim.text.get() + form.lst_freq.text.get(),
            "on100%daily");
  EXPECT_TRUE(std::all_of(form.days.begin(), form.days.end(),
                          [](const CheckBox& day) { return day.checked.get(); }));

  form.lst_eventdevice.text = "Hall Lamp B12";
  form.lst_hour.text = "sSet";
  house.click(form.lst_hour);
  EXPECT_EQ(house.dialogs.messages.back(),
            "Please read: You have selected Sunset\r\n\r\nYou may now select an offset time\r\n"
            "using the Minute selector.\r\n\r\nYou can offset Sunset by 3 hours either\r\n"
            "before or after actual sunset.");
  EXPECT_THAT(form.lst_min.items.get(), ElementsAre("-3", "-2", "-1", "00", "+1", "+2", "+3"));
  EXPECT_EQ(form.lst_min.text.get(), "00");
  form.lst_min.text = "-1";
  for (std::size_t day : {0u, 1u, 2u, 3u, 5u, 6u}) form.days[day].checked = false;
  form.Command6.click();
  EXPECT_FALSE(form.enabled);
  EXPECT_EQ(form.mouse_pointer.get(), MousePointer::kHourglass);
  house.loop.run_pending();
  EXPECT_EQ(house.status(), "New event saved at 14:05");
  EXPECT_TRUE(form.enabled);
  EXPECT_THAT(house.event_lines(), ElementsAre("Hall Lamp~B~12~100~sSet:-1~on~daily~f"));
  EXPECT_EQ(house.content("evelst.hwd").substr(37), "\r\n");
  ASSERT_THAT(form.ListView1.rows.get(), SizeIs(1));
  EXPECT_FALSE(form.lab_noevents.visible);

  house.line();
  house.loop.advance(3 * 24h);
  EXPECT_THAT(house.line(), ElementsAre("Fri 19:19:00 B12 2"));
}

TEST(EditorStory, ChoicesFollowEachOther) {
  EventHouse house;
  FrmMain& form = house.open_connected();
  form.lst_action.text = "off";
  form.lst_action.click();
  EXPECT_FALSE(form.lst_dim.visible || form.Label29.visible);
  form.lst_action.text = "on";
  EXPECT_TRUE(form.lst_dim.visible && form.Label29.visible);
  form.lst_hour.text = "sRise";
  house.click(form.lst_hour);
  EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("before or after actual sunrise."));
  form.lst_hour.text = "07";
  form.lst_hour.click();
  EXPECT_THAT(form.lst_min.items.get(), SizeIs(60));
  EXPECT_EQ(form.lst_min.text.get(), "00");
  form.lst_hour.text = "sSet";
  form.lst_min.text = "+2";
  house.click_node("Events");
  EXPECT_THAT(form.lst_min.items.get(), SizeIs(60)) << "the present time among sun offsets";
}

TEST(EditorStory, AnEditedEventMovesToTheEnd) {
  EventHouse house(std::string(kPorch) + "\r\n" + kMorning + "\r\n");
  FrmMain& form = house.open_connected_at(14, 5, 0);
  house.click_node("Events");
  edit(house, "Hall Lamp");
  EXPECT_EQ(form.lst_eventdevice.text.get(), "Hall Lamp B12");
  EXPECT_EQ(form.lst_hour.text.get() + form.lst_min.text.get(), "sSet+1");
  EXPECT_EQ(form.lst_action.text.get() + form.lst_freq.text.get(), "offonce");
  for (std::size_t day = 0; day < 7; ++day)
    EXPECT_EQ(form.days[day].checked.get(), day == 4 || day == 5) << day;
  EXPECT_FALSE(form.ListView1.enabled || form.Tree.enabled || form.Command5.bold);
  bool bold = form.Command6.bold;
  for (int second = 0; second < 3; ++second) {
    house.loop.advance(1s);
    EXPECT_NE(form.Command6.bold.get(), bold) << "Save does not flash";
    bold = form.Command6.bold;
  }

  house.status_texts.clear();
  const auto start = house.loop.uptime();
  form.Command6.click();
  ASSERT_TRUE(house.loop.advance_until([&form] { return form.enabled.get(); }, 10s));
  EXPECT_EQ(house.loop.uptime() - start, 2s);
  EXPECT_THAT(
      house.status_texts,
      ElementsAre("Please wait, preparing to edit your event", "Old event deleted, now cleaning up",
                  "Please wait, saving your new event now", "New event saved at 14:05"));
  EXPECT_THAT(house.event_lines(), ElementsAre(kMorning, kPorch));
  EXPECT_TRUE(form.ListView1.enabled && form.Tree.enabled);
  EXPECT_TRUE(form.Command5.bold && form.Command6.bold);
  EXPECT_EQ(form.flashsave.interval(), 0);
  EXPECT_EQ(form.ListView1.rows.get()[static_cast<std::size_t>(form.ListView1.selected)][0],
            "Hall Lamp");

  edit(house, "Hall Lamp");
  form.mnu_newevent.click();
  EXPECT_TRUE(form.ListView1.enabled && form.Tree.enabled);
  form.lst_eventdevice.text = "Hall Lamp B12";
  house.click(form.Command6, 5s);
  EXPECT_THAT(house.event_lines(), SizeIs(3)) << "\"New\" still replaced the event";
}

TEST(EditorStory, RefusesWhatIsNoEventAndKeepsWhatWasTyped) {
  EventHouse house(std::string(kPorch) + "\r\n");
  FrmMain& form = house.open_connected();
  house.dialogs.messages.clear();
  form.lst_eventdevice.text = std::string();
  house.click(form.Command6, 5s);
  EXPECT_THAT(house.dialogs.messages,
              ElementsAre("Please check: Please choose a device from the list."));
  edit(house, "Hall Lamp");
  form.lst_min.text = "30";
  house.click(form.Command6, 5s);
  EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("-3 to +3"));
  EXPECT_FALSE(form.ListView1.enabled) << "a mistake ended the editing";
  EXPECT_EQ(form.lst_min.text.get(), "30");
  EXPECT_THAT(house.event_lines(), ElementsAre(kPorch));
  EXPECT_TRUE(form.enabled);
}

TEST(EditorStory, SaveWaitsForAPassThatRuns) {
  EventHouse house(std::string(kMorning) + "\r\n" + kPorch + "\r\n");
  FrmMain& form = house.open_connected_at(7, 29, 30);
  house.interface_control.mains_time = 5s;
  edit(house, "Hall Lamp");
  form.lst_action.text = "on";
  house.run_until(7, 30, 1);
  ASSERT_TRUE(form.filebusy);
  house.click(form.Command6, 10s);
  EXPECT_THAT(house.event_lines(), ElementsAre(kMorning, kPorch)) << "changed under the pass";
  house.run_until(7, 31, 0);
  EXPECT_THAT(house.event_lines(), ElementsAre(kMorning, "Hall Lamp~B~12~100~sSet:+1~on~once~fs"));
  EXPECT_TRUE(form.enabled);
  EXPECT_FALSE(form.filebusy);
}

TEST(EditorStory, ADiskThatRefusesIsToldAndNothingIsLost) {
  EventHouse house(std::string(kMorning) + "\r\n");
  FrmMain& form = house.open_connected();
  house.dialogs.messages.clear();
  form.Command5.click();
  form.lst_eventdevice.text = "Hall Lamp B12";
  house.files.stop_at(1);
  house.click(form.Command6, 5s);
  EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("your event is not saved"));
  EXPECT_EQ(house.status(), "The event could not be saved");
  house.select_event("Kitchen Table Lamp");
  house.click(form.mnu_delevent, 5s);
  EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("the event is still there"));
  house.files.no_stop();
  EXPECT_THAT(house.event_lines(), ElementsAre(kMorning));
  EXPECT_FALSE(form.filebusy);
}

TEST(EditorStory, AListThatStoppedHalfWayInItsOldWaysComesBack) {
  EventHouse house;
  house.content("temp.txt") = std::string(kMorning) + "\r\n";
  house.open_connected();
  EXPECT_THAT(house.event_lines(), ElementsAre(kMorning));
  EXPECT_FALSE(house.files.contents.contains(House::file("temp.txt")));
}

TEST(EditorStory, CancelLeavesTheEventAsItWas) {
  EventHouse house("Hall Lamp~B~12~40~7:05~on~daily~m\r\n");
  FrmMain& form = house.open_connected_at(14, 5, 0);
  EXPECT_FALSE(form.cmd_cancel.visible);
  edit(house, "Hall Lamp");
  EXPECT_EQ(form.lst_hour.text.get() + "|" + form.lst_min.text.get(), "7|05");
  EXPECT_TRUE(form.cmd_cancel.visible);
  form.lst_dim.text = "90%";
  form.cmd_cancel.click();
  EXPECT_FALSE(form.cmd_cancel.visible);
  EXPECT_TRUE(form.ListView1.enabled && form.Tree.enabled);
  EXPECT_EQ(form.flashsave.interval(), 0);
  EXPECT_EQ(form.lst_hour.text.get(), "14") << "the boxes still hold the event";
  house.loop.advance(5s);
  EXPECT_THAT(house.event_lines(), ElementsAre("Hall Lamp~B~12~40~7:05~on~daily~m"));
}

TEST(EditorStory, AnEventWithoutADayIsAskedAbout) {
  EventHouse house(std::string(kMorning) + "\r\n");
  FrmMain& form = house.open_connected();
  edit(house, "Kitchen Table Lamp");
  for (CheckBox& day : form.days) day.checked = false;
  house.dialogs.says_yes = false;
  house.click(form.Command6, 5s);
  EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("never run"));
  EXPECT_EQ(house.dialogs.last.preselected, Answer::kNo);
  EXPECT_THAT(house.event_lines(), ElementsAre(kMorning));
  EXPECT_TRUE(form.cmd_cancel.visible) << "the answer ended the editing";
  house.dialogs.says_yes = true;
  form.Command6.click();
  house.click(form.Command6, 10s);
  EXPECT_THAT(house.event_lines(), ElementsAre("Kitchen Table Lamp~A~3~40~07:30~on~daily~"));
}

TEST(EditorStory, WhatIsPressedDuringASaveIsNeitherLostNorDoneTwice) {
  EventHouse house(std::string(kPorch) + "\r\n" + kMorning + "\r\n");
  FrmMain& form = house.open_connected();
  edit(house, "Hall Lamp");
  form.lst_action.text = "on";
  form.Command6.click();
  form.Command6.click();  // the same once more
  form.lst_dim.text = "60%";
  house.click(form.Command6, 500ms);
  form.Command5.click();  // ends the editing under the saves
  form.lst_eventdevice.text = "Shed Heater C1";
  form.lst_hour.text = "06";
  form.lst_min.text = "00";
  form.Command6.click();
  form.Command6.click();
  edit(house, "Kitchen Table Lamp");
  house.loop.advance(30s);
  EXPECT_THAT(house.event_lines(), ElementsAre(kMorning, "Hall Lamp~B~12~60~sSet:+1~on~once~fs",
                                               "Shed Heater~C~1~100~06:00~on~daily~mtwufsr"));
  EXPECT_TRUE(form.enabled);
  EXPECT_FALSE(form.ListView1.enabled) << "a save that was older ended the editing";
  EXPECT_EQ(form.lst_eventdevice.text.get(), "Kitchen Table Lamp A3");
}

}  // namespace
}  // namespace homewarden::testing
