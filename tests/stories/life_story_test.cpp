// Start-up and shutdown of the whole program, second by second.

#include <gmock/gmock.h>

#include "core/version.h"
#include "tests/stories/house.h"

namespace homewarden::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Texts = std::vector<std::string>;

TEST(LifeStory, StartsFindsTheInterfaceAndCloses) {
  House house;
  house.loop.set_wall_clock(2023, 6, 21, 12, 0, 23);
  house.open();
  house.loop.run_pending();
  EXPECT_THAT(house.wait_texts,
              ElementsAre("Loading Lists", "Loading Devices", "Loading Options", "Loading Events"));
  EXPECT_TRUE(house.form().visible);
  EXPECT_FALSE(house.wait().visible);
  EXPECT_TRUE(house.form().frm_home.visible);
  EXPECT_EQ(house.machine("closeengine"), "True");
  EXPECT_EQ(house.machine("installing"), "False");
  EXPECT_EQ(house.form().Label48.caption.get(),
            "The web server is currently set to run on port 80");
  EXPECT_TRUE(house.interface_control.take_notes().empty()) << "searched before the delayed step";

  house.loop.advance(500ms);
  EXPECT_THAT(house.interface_control.take_notes(),
              ElementsAre("port 2", "open", "option 4", "client Homewarden"));
  EXPECT_EQ(house.status(), "Found and Initialized Interface on com port 2, timer 37000");
  EXPECT_EQ(house.form().Statusbar.panel3.get(), "STATUS: Ready");
  EXPECT_TRUE(house.form().enabled);
  EXPECT_EQ(house.form().timetimer.interval(), 1000);

  house.form().left = 1507.5F;
  house.form().close_requested();
  house.form().close_requested();  // an impatient person
  house.loop.run_pending();
  EXPECT_EQ(house.interface_control.take_notes(), Texts{"close"});
  EXPECT_EQ(house.settings.read("data", "left", ""), "1507.5");
  EXPECT_EQ(house.machine("closeengine"), "False");
  EXPECT_EQ(house.wait().Label2.caption.get(), "Homewarden - Closing");
  EXPECT_THAT(house.wait_texts, Contains("Closing Port"));
  EXPECT_TRUE(house.services.calls.empty()) << "service mode is off";
  EXPECT_TRUE(house.loop.has_quit());
}

TEST(LifeStory, TakesTheHouseOverFromAServiceThatWillNotStop) {
  House house;
  house.services.state = ServiceState::kRunning;
  house.services.obeys = false;
  house.open();
  house.loop.advance(8999ms);
  EXPECT_EQ(house.services.calls, Texts({"stop Wardengine", "stop Wardengine", "stop Wardengine"}));
  EXPECT_EQ(house.wait_texts, Texts{"Stopping Service"});
  house.loop.advance(1ms);
  EXPECT_TRUE(house.form().visible);
}

TEST(LifeStory, StopsAnObedientServiceOnceAndStartsItAtTheEnd) {
  House house;
  house.services.state = ServiceState::kRunning;
  house.settings.write("data", "service", "1");
  house.open();
  house.loop.advance(5s);
  EXPECT_EQ(house.services.calls, Texts{"stop Wardengine"});
  house.services.obeys = false;  // it stays "Stopped": one more start, a second later
  house.form().close_requested();
  house.loop.advance(1999ms);
  EXPECT_EQ(house.services.calls, Texts({"stop Wardengine", "start Wardengine"}));
  house.loop.advance(1ms);
  EXPECT_EQ(house.services.calls.size(), 3u);
  EXPECT_TRUE(house.loop.has_quit());
}

TEST(LifeStory, SecondCopyWaitsFiveSecondsAndEndsWithoutAWord) {
  House house;
  house.instance.others = 2;
  house.open();
  house.loop.advance(4999ms);
  EXPECT_FALSE(house.loop.has_quit());
  house.loop.advance(1ms);
  EXPECT_TRUE(house.loop.has_quit());
  EXPECT_TRUE(house.dialogs.messages.empty());
  EXPECT_FALSE(house.form().visible);

  House patient;  // the first copy ended meanwhile
  patient.instance.others = 1;
  patient.open();
  patient.loop.advance(5s);
  EXPECT_TRUE(patient.form().visible);
}

TEST(LifeStory, DelayedStartLasts21SecondsUnlessSkipped) {
  House house;
  house.set_delayed();
  house.open();
  house.loop.advance(20999ms);
  EXPECT_EQ(house.wait_texts.front(), "Time Delay 20");
  EXPECT_EQ(house.wait_texts.back(), "Time Delay 0");
  EXPECT_TRUE(house.wait().lab_wait.visible);
  EXPECT_FALSE(house.form().visible);
  house.loop.advance(1ms);
  EXPECT_TRUE(house.form().visible);
  EXPECT_FALSE(house.wait().lab_wait.visible);
  EXPECT_TRUE(house.form().chk_startup.checked);

  House hasty;
  hasty.set_delayed();
  hasty.open();
  hasty.loop.advance(3500ms);
  hasty.wait().lab_wait.click();
  hasty.loop.advance(499ms);
  EXPECT_FALSE(hasty.form().visible);
  hasty.loop.advance(1ms);
  EXPECT_TRUE(hasty.form().visible);
}

TEST(LifeStory, AWindowOffTheScreenComesBackAndOneAboveStays) {
  House house;
  house.settings.write("data", "left", "99999");
  house.settings.write("data", "top", "-300");
  house.open();
  house.loop.run_pending();
  EXPECT_EQ(house.form().left.get(), 100.0F);
  EXPECT_EQ(house.form().top.get(), -300.0F);
}

TEST(LifeStory, MinimisedToTheNotificationAreaAndStartedThere) {
  House house;
  house.open_connected();
  house.form().state = WindowState::kMinimized;
  EXPECT_FALSE(house.form().visible);
  EXPECT_EQ(house.form().state.get(), WindowState::kNormal);
  EXPECT_EQ(house.settings.read("data", "state", ""), "1");

  house.forget_program();
  house.open();
  house.loop.run_pending();
  EXPECT_TRUE(house.form().visible) << "shown briefly";
  house.loop.advance(500ms);
  EXPECT_FALSE(house.form().visible);
  EXPECT_EQ(house.form().state.get(), WindowState::kNormal);
  int menus = 0;
  house.form().sspp3.popped_up.connect([&menus] { ++menus; });
  house.icon().SysTrayMouseDown(2);
  EXPECT_EQ(menus, 1);
  EXPECT_FALSE(house.form().visible);
  house.icon().SysTrayMouseDown(1);
  EXPECT_TRUE(house.form().visible);
  EXPECT_FALSE(house.form().topmost);
  EXPECT_EQ(house.settings.read("data", "state", ""), "0");
  EXPECT_EQ(house.icon().ToolTip.get(), std::string("Homewarden Version ") + kVersion);
}

TEST(LifeStory, WithoutANotificationAreaTheWindowIsNotLost) {
  House house;
  house.open();
  house.icon().has_area = false;
  house.loop.advance(2s);
  house.form().state = WindowState::kMinimized;
  EXPECT_TRUE(house.form().visible) << "hidden where no icon brings it back";
}

TEST(LifeStory, StoredPortThatNeverAnswersEndsTheProgramAfterFourTries) {
  House house;
  house.interface_control.status_of_port[2] = 2;
  house.open();
  house.loop.advance(14999ms);
  EXPECT_EQ(house.interface_control.take_notes(), Texts({"port 2", "open", "open", "open"}));
  EXPECT_FALSE(house.form().enabled);
  house.loop.advance(1s);
  ASSERT_EQ(house.dialogs.messages.size(), 1u);
  EXPECT_THAT(house.dialogs.messages[0],
              HasSubstr("Error: ERROR: Could not initialize your X10 Home Control unit."));
  EXPECT_THAT(house.status_texts, Contains("ERROR! Could not find your X10 Interface"));
  EXPECT_TRUE(house.loop.has_quit());
  EXPECT_EQ(house.machine("port"), "2");
}

TEST(LifeStory, UnusableStoredPortIsSkippedInTheScan) {
  House house;
  house.interface_control.status_of_port = {{2, 1}, {4, 0}};
  house.open();
  house.loop.advance(1s);
  EXPECT_EQ(house.interface_control.take_notes(),
            Texts({"port 2", "open", "port 1", "open", "port 3", "open", "port 4", "open",
                   "option 4", "client Homewarden"}));
  EXPECT_EQ(house.machine("port"), "4");
  EXPECT_TRUE(house.form().connected);
}

TEST(LifeStory, NoInterfaceAnywhereAndThenOneByHand) {
  House house;
  house.interface_control.status_of_port.clear();
  house.set_machine("port", "none");
  house.open();
  house.loop.advance(1s);
  EXPECT_EQ(house.interface_control.take_notes().size(), 30u);
  ASSERT_EQ(house.dialogs.messages.size(), 1u);
  EXPECT_THAT(house.dialogs.messages[0], HasSubstr("ERROR!: Sorry, Could not find a CM11 or CM12"));
  EXPECT_TRUE(house.form().enabled);
  EXPECT_FALSE(house.form().connected);
  EXPECT_EQ(house.form().eventtimer.interval(), 0) << "events run without an interface";
  EXPECT_NE(house.form().Statusbar.panel3.get(), "STATUS: Ready");

  for (const char* silly : {"0", "16", "two", ""}) {
    house.dialogs.typed = {silly};
    house.form().Label63.click();
    house.loop.run_pending();
    EXPECT_EQ(house.dialogs.messages.back(),
              "Error: Sorry, that was a silly number. Please try again");
    EXPECT_EQ(house.machine("port"), "none");
  }
  house.interface_control.status_of_port[7] = 0;
  house.dialogs.typed = {"7"};
  house.form().Label63.click();
  house.loop.run_pending();
  EXPECT_EQ(house.machine("port"), "7");
  EXPECT_TRUE(house.form().connected);
}

TEST(LifeStory, SearchingAgainClosesFirstAndAsksEveryPort) {
  House house;
  house.open_connected();
  house.interface_control.refuses_close = true;
  house.form().Label51.click();
  house.loop.advance(2s);
  EXPECT_EQ(house.interface_control.take_notes(),
            Texts({"close", "close", "port 1", "open", "port 2", "open", "option 4",
                   "client Homewarden"}));
}

}  // namespace
}  // namespace homewarden::testing
