// Profiles: several sets of events, one of them active.

#include "tests/stories/event_house.h"

namespace homewarden::testing {
namespace {

const char* const kThree =
    "Hall Lamp~B~12~ ~00:00~off~daily~mtwufsr\r\nHall Lamp~B~12~ ~06:00~off~daily~m\r\n"
    "Hall Lamp~B~12~ ~07:00~off~daily~m\r\n";
const char* const kOne = "Kitchen Kettle~A~4~100~00:00~on~daily~mtwufsr\r\n";

class ProfileStory : public ::testing::Test {
 protected:
  FrmMain& open(const std::string& events) {
    if (!events.empty()) house.content("evelst.hwd") = events;
    return house.open_connected();
  }
  void choose(const std::string& profile, House::Time length = 0ms) {
    house.form().com_profile.text = profile;
    house.click(house.form().com_profile, length);
  }
  std::string file(const std::string& name) {
    const auto found = house.files.contents.find(House::file(name));
    return found == house.files.contents.end() ? "(missing)" : found->second;
  }
  std::string active() { return house.settings.read("data", "profile", "(none)"); }

  EventHouse house;
};

TEST_F(ProfileStory, EveryProfileHasItsOwnEvents) {
  FrmMain& form = open(kThree);
  EXPECT_EQ(form.com_profile.text.get(), "Standard");
  choose("Holiday", 500ms);
  EXPECT_TRUE(form.filebusy);
  EXPECT_EQ(form.mouse_pointer.get(), MousePointer::kHourglass);
  house.loop.advance(4s);
  EXPECT_EQ(active(), "Holiday");
  EXPECT_EQ(file("Standard.txt"), kThree);
  EXPECT_EQ(file("evelst.hwd"), "(missing)");
  EXPECT_THAT(form.ListView1.rows.get(), IsEmpty());
  EXPECT_TRUE(form.frm_event.visible);
  EXPECT_FALSE(form.filebusy);
  EXPECT_EQ(form.mouse_pointer.get(), MousePointer::kNormal);

  house.content("evelst.hwd") = kOne;
  choose("Standard", 4s);
  EXPECT_EQ(file("evelst.hwd"), kThree);
  EXPECT_EQ(file("Holiday.txt"), kOne);
  EXPECT_EQ(form.ListView1.rows.get().size(), 3u);
  choose("Standard", 4s);  // the active one
  EXPECT_EQ(file("evelst.hwd"), kThree);

  house.files.contents.erase(House::file("evelst.hwd"));  // it has no events now
  choose("Holiday", 4s);
  choose("Standard", 4s);
  EXPECT_EQ(file("evelst.hwd"), "(missing)") << "events that were deleted came back";
  EXPECT_EQ(file("Holiday.txt"), kOne);
  EXPECT_EQ(file("profile.tmp"), "(missing)");
}

TEST_F(ProfileStory, ASwitchInTheMidnightMinuteRunsOneProfilesEvents) {
  house.loop.set_wall_clock(2023, 6, 21, 23, 59, 50);
  FrmMain& form = open(kThree);
  house.content("Holiday.txt") = kOne;
  house.run_until(23, 59, 59);
  choose("Holiday");
  house.run_until(0, 0, 30);
  EXPECT_THAT(house.line(), ElementsAre(HasSubstr("00:00:0")));
  EXPECT_EQ(file("evelst.hwd"), kOne);
  EXPECT_EQ(file("Standard.txt"), kThree);
  EXPECT_FALSE(form.filebusy);
}

TEST_F(ProfileStory, AnEventIsSavedAndCleanedUpAroundASwitch) {
  FrmMain& form = open(kThree);
  choose("Holiday");
  form.once_removal[0] = "Hall Lamp~B~12~ ~06:00~off~daily";
  form.lst_eventdevice.text = "Kitchen Kettle A4";
  house.click(form.Command6, 30s);
  EXPECT_EQ(file("Standard.txt"), kThree);
  EXPECT_THAT(file("evelst.hwd"), HasSubstr("Kitchen Kettle~A~4~100~"));
}

TEST_F(ProfileStory, StartingSwitchesNothingAndOddNamesAreNoFiles) {
  house.settings.write("data", "profile", "../../etc/passwd");
  FrmMain& form = open(kThree);
  EXPECT_EQ(form.com_profile.text.get(), "Standard");
  EXPECT_EQ(file("evelst.hwd"), kThree);
  form.formloading = true;
  choose("Holiday", 4s);
  EXPECT_EQ(file("Standard.txt"), "(missing)");
  form.formloading = false;
  house.dialogs.messages.clear();
  choose("../out", 4s);
  EXPECT_THAT(house.dialogs.messages, ElementsAre(HasSubstr("the profile was not changed")));
  EXPECT_EQ(form.com_profile.text.get(), "Standard");
  EXPECT_EQ(file("evelst.hwd"), kThree);
}

TEST_F(ProfileStory, ASettingThatCannotBeWrittenChangesNothing) {
  open(kThree);
  house.registry.may_change = [] { return false; };
  choose("Holiday", 4s);
  EXPECT_EQ(file("evelst.hwd"), kThree);
  EXPECT_EQ(file("profile.tmp"), "(missing)");
  EXPECT_EQ(house.form().com_profile.text.get(), "Standard");
}

TEST_F(ProfileStory, ADiskThatRefusesForAWhileLosesNoEvent) {
  for (int stop = 1; stop <= 8; ++stop) {
    house.files.contents = {{House::file("rmlst.hwd"), "Kitchen~Table Lamp~A~3\r\n"},
                            {House::file("Holiday.txt"), kOne}};
    house.settings.write("data", "profile", "Standard");
    FrmMain& form = open(kThree);
    house.files.stop_at(stop);
    choose("Holiday", 10s);
    house.files.no_stop();  // there is room again, and the person goes on
    form.lst_eventdevice.text = "Kitchen Table Lamp A3";
    house.click(form.Command6, 10s);
    choose("Weekends", 10s);
    house.forget_program();
    house.open(5s);
    choose("Christmas", 10s);
    EXPECT_THAT(file("Standard.txt"), HasSubstr("~07:00~off~daily~m")) << "refused from " << stop;
    EXPECT_THAT(file("Holiday.txt"), HasSubstr(kOne)) << "refused from " << stop;
    EXPECT_THAT(file("Standard.txt") + file("Holiday.txt"), HasSubstr("Kitchen Table Lamp~A~3"))
        << "the event saved meanwhile is lost, refused from " << stop;
  }
}

TEST_F(ProfileStory, AListThatCannotBeReadIsNotParked) {
  open(kThree);
  house.files.unreadable = {House::file("evelst.hwd")};
  choose("Holiday", 10s);
  house.files.unreadable.clear();
  EXPECT_EQ(active(), "(none)");
  EXPECT_EQ(file("evelst.hwd"), kThree);
  choose("Weekends", 10s);
  EXPECT_EQ(file("Standard.txt"), kThree);
}

TEST_F(ProfileStory, WhatIsClickedDuringASwitchIsNotDoneToTheOtherProfile) {
  FrmMain& form = open(kThree);
  house.content("Holiday.txt") = kThree;
  form.once_removal[0] = "Hall Lamp~B~12~ ~06:00~off~daily";
  choose("Holiday", 500ms);
  form.ListView1.selected = 0;
  form.ListView1.double_click();
  form.ListView1.key_press(4);
  EXPECT_TRUE(form.Tree.enabled) << "an event of the old profile is being edited";
  house.loop.advance(30s);
  EXPECT_EQ(file("evelst.hwd"), kThree) << "the other profile lost an event";
  EXPECT_EQ(file("Standard.txt").find("06:00"), std::string::npos);
  EXPECT_TRUE(form.ListView1.enabled);
}

// The finder leads to the profiles while an event is edited.
TEST_F(ProfileStory, AnEventInTheEditorDoesNotGoToAnotherProfileByItself) {
  FrmMain& form = open(kThree);
  form.ListView1.selected = 0;
  form.ListView1.double_click();
  ASSERT_TRUE(form.cmd_cancel.visible);
  choose("Holiday", 5s);
  EXPECT_FALSE(form.cmd_cancel.visible) << "Save would replace what this profile has not";
  EXPECT_TRUE(form.ListView1.enabled && form.Tree.enabled);
}

TEST_F(ProfileStory, OfSeveralChoicesTheLastOneCounts) {
  FrmMain& form = open(kThree);
  house.content("Weekends.txt") = kOne;
  form.filebusy = true;
  for (const char* profile : {"Holiday", "Christmas", "Weekends"}) {
    choose(profile, 700ms);
  }
  form.filebusy = false;
  house.loop.advance(30s);
  EXPECT_EQ(active(), "Weekends");
  EXPECT_EQ(form.com_profile.text.get(), "Weekends");
  EXPECT_EQ(file("evelst.hwd"), kOne);
  EXPECT_EQ(file("Standard.txt"), kThree);
  EXPECT_TRUE(form.ListView1.enabled);
  EXPECT_EQ(form.mouse_pointer.get(), MousePointer::kNormal);
}

}  // namespace
}  // namespace homewarden::testing
