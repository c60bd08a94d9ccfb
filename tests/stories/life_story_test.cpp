// Start-up and shutdown of the whole program, second by second.

#include "core/version.h"
#include "tests/stories/event_house.h"

namespace homewarden::testing {
namespace {

TEST(LifeStory, StartsFindsTheInterfaceAndCloses) {
  House house;
  house.loop.set_wall_clock(2023, 6, 21, 12, 0, 23);
  house.open(0s);
  EXPECT_THAT(house.wait_texts, ElementsAre("Loading Lists", "Loading MsAgent", "Loading Devices",
                                            "Loading Options", "Loading Events"));
  EXPECT_TRUE(house.form().visible);
  EXPECT_FALSE(house.wait().visible);
  EXPECT_TRUE(house.form().frm_home.visible);
  EXPECT_EQ(house.machine("closeengine"), "True");
  EXPECT_EQ(house.machine("installing"), "False");
  EXPECT_EQ(house.form().Label48.caption.get(),
            "The web server is currently set to run on port 80");
  EXPECT_TRUE(house.notes().empty()) << "searched before the delayed step";

  house.loop.advance(500ms);
  EXPECT_THAT(house.notes(), ElementsAre("port 2", "open", "option 4", "client Homewarden"));
  EXPECT_EQ(house.status(), "Found and Initialized Interface on com port 2, timer 37000");
  EXPECT_EQ(house.form().Statusbar.panel3.get(), "STATUS: Ready");
  EXPECT_TRUE(house.form().enabled);
  EXPECT_EQ(house.form().timetimer.interval(), 1000);

  house.form().left = 1507.5F;
  house.form().close_requested();
  house.form().close_requested();  // an impatient person
  house.loop.run_pending();
  EXPECT_EQ(house.notes(), Texts{"close"});
  EXPECT_EQ(house.settings.read("data", "left", ""), "1507.5");
  EXPECT_EQ(house.machine("closeengine"), "False");
  EXPECT_EQ(house.wait().Label2.caption.get(), "Homewarden - Closing");
  EXPECT_THAT(house.wait_texts, Contains("Closing Port"));
  EXPECT_TRUE(house.services.calls.empty()) << "service mode is off";
  EXPECT_TRUE(house.loop.has_quit());
}

TEST(LifeStory, TakesTheHouseOverFromAServiceThatWillNotStop) {
  for (const bool lives : {false, true}) {
    House house;
    house.services.state = ServiceState::kRunning;
    house.services.obeys = false;
    house.counterpart.others = lives ? 1 : 0;
    house.content("temp.txt") = "Hall Lamp~B~12~100~12:01~on~daily~m\r\n";  // by the service
    const Texts stops(3, "stop Wardengine");
    house.open(2999ms);
    EXPECT_EQ(house.services.calls, Texts(1, stops[0])) << "not three seconds apart";
    house.loop.advance(6s);
    EXPECT_EQ(house.services.calls, stops);
    EXPECT_EQ(house.wait_texts, Texts{"Stopping Service"});
    if (lives) house.loop.advance(35s);
    if (lives) house.web.taken_ports = {"80"};
    EXPECT_FALSE(house.form().visible) << "the service still has the web server's port";
    house.loop.advance(1ms);
    EXPECT_TRUE(house.form().visible);
    EXPECT_EQ(house.files.exists(House::file("temp.txt")), lives) << "recovered under its hands";
    if (!lives) continue;
    house.loop.advance(5s);
    EXPECT_EQ(house.machine("webport"), "(none)") << "the port of a moment was stored for good";
    EXPECT_THAT(house.status_texts, Contains(HasSubstr("waits for port 80")));
    house.web.taken_ports.clear();
    house.loop.advance(2s);
    EXPECT_TRUE(house.web.Listening());
    house.interface_control.mains_time = 3s;  // the last command takes long
    house.click_node("Hall");
    house.click(house.form().device[0]);
    house.close(2500ms);
    EXPECT_FALSE(house.web.Listening()) << "started again at the end";
  }
}

TEST(LifeStory, StopsAnObedientServiceOnceAndStartsItAtTheEnd) {
  House house;
  house.services.state = ServiceState::kRunning;
  house.settings.write("data", "service", "1");
  house.open(5s);
  EXPECT_EQ(house.services.calls, Texts{"stop Wardengine"});
  EXPECT_EQ(house.wait_texts.front(), "Stopping Service");
  house.services.obeys = false;  // it stays "Stopped": one more start, a second later
  house.close(1999ms);
  EXPECT_EQ(house.services.calls, Texts({"stop Wardengine", "start Wardengine"}));
  house.loop.advance(1ms);
  EXPECT_EQ(house.services.calls.size(), 3u);
  EXPECT_TRUE(house.loop.has_quit());
}

TEST(LifeStory, SecondCopyWaitsFiveSecondsAndEndsWithoutAWord) {
  House house;
  house.instance.others = 2;
  house.window_call.answered = true;
  house.open(4999ms);
  EXPECT_FALSE(house.wait().visible) << "it covers the window that came forward";
  EXPECT_FALSE(house.loop.has_quit());
  house.loop.advance(1ms);
  EXPECT_TRUE(house.loop.has_quit());
  EXPECT_TRUE(house.dialogs.messages.empty());
  EXPECT_FALSE(house.form().visible);

  House patient;  // the first copy ended meanwhile
  patient.instance.others = 1;
  patient.open(4s);
  patient.set_machine("closeengine", "False");
  patient.loop.advance(999ms);
  EXPECT_TRUE(patient.wait().visible);
  patient.loop.advance(1ms);
  EXPECT_TRUE(patient.form().visible);
  EXPECT_EQ(patient.machine("closeengine"), "True");

  House late;  // and left the house to the service
  late.instance.others = 1;
  late.open(3s);
  late.services.state = ServiceState::kRunning;
  late.loop.advance(4s);
  EXPECT_EQ(late.services.calls, Texts{"stop Wardengine"});
  EXPECT_FALSE(late.form().visible) << "the service still has the web server's port";
  late.loop.advance(1s);
  EXPECT_TRUE(late.form().visible);
}

TEST(LifeStory, AnotherCopyBringsTheWindowForwardHoweverItIsHidden) {
  House first;
  first.open(400ms);
  EXPECT_FALSE(first.window_call.show) << "before the window has its state of the last time";
  first.loop.advance(2s);
  first.form().state = WindowState::kMinimized;
  EXPECT_FALSE(first.form().visible);
  int raised = 0;
  first.form().raised.connect([&raised] { ++raised; });
  first.window_call.show();
  EXPECT_TRUE(first.form().visible);
  EXPECT_EQ(first.settings.read("data", "state", ""), "0");
  EXPECT_EQ(raised, 1);
  first.icon().has_area = false;
  first.form().state = WindowState::kMinimized;
  first.window_call.show();
  EXPECT_EQ(first.form().state.get(), WindowState::kNormal) << "it stayed minimised";
  first.form().close_requested();
  EXPECT_TRUE(first.window_call.show);
  first.loop.run_pending();
  EXPECT_FALSE(first.window_call.show) << "a window that closes came back";
}

TEST(LifeStory, DelayedStartLasts21SecondsUnlessSkipped) {
  House house;
  house.set_delayed();
  house.open(20999ms);
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
  hasty.open(3500ms);
  hasty.click(hasty.wait().lab_wait, 499ms);
  EXPECT_FALSE(hasty.form().visible);
  hasty.loop.advance(1ms);
  EXPECT_TRUE(hasty.form().visible);
}

TEST(LifeStory, MinimisedToTheNotificationAreaAndStartedThere) {
  House house;
  house.open_connected();
  house.form().state = WindowState::kMinimized;
  EXPECT_FALSE(house.form().visible);
  EXPECT_EQ(house.form().state.get(), WindowState::kNormal);
  EXPECT_EQ(house.settings.read("data", "state", ""), "1");

  house.forget_program();
  house.open(0s);
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

// Position and flags of a copy that was started and ended before it had the house.
TEST(LifeStory, ACopyEndedBeforeItHasTheHouseLeavesNoMark) {
  for (const bool delayed : {true, false}) {
    House house;
    house.settings.write("data", "left", "1507.5");
    house.settings.write("data", "service", "1");
    if (delayed) {
      house.set_delayed();
      house.services.state = ServiceState::kRunning;  // only without another copy
    } else {
      house.instance.others = 2;
    }
    house.open(4s);
    house.set_machine("closeengine", "as the other copy left it");
    house.close(2s);
    EXPECT_TRUE(house.loop.has_quit());
    EXPECT_EQ(house.machine("closeengine"), "as the other copy left it");
    EXPECT_EQ(house.settings.read("data", "left", ""), "1507.5");
    EXPECT_EQ(house.settings.read("data", "width", "none"), "none");
    EXPECT_TRUE(house.notes().empty());
    EXPECT_FALSE(house.instance.taken) << "the service finds the house taken";
    if (delayed)
      EXPECT_EQ(house.services.calls, Texts({"stop Wardengine", "start Wardengine"}))
          << "nobody has the house";
    else
      EXPECT_TRUE(house.services.calls.empty()) << "beside the first copy";
  }
}

TEST(LifeStory, ClosedBetweenTheWindowAndTheSearchNothingIsSearchedAndTheStepsAreNew) {
  House house;
  house.open(400ms);
  EXPECT_EQ(house.wait().Label1.caption.get(), "Loading Events");
  std::string shown_first;
  house.wait().visible.changed.connect([&] {
    if (shown_first.empty()) shown_first = house.wait().Label1.caption;
  });
  house.close(5s);
  EXPECT_EQ(shown_first, "Please Wait") << "the closing window showed how far the start had come";
  EXPECT_EQ(house.notes(), Texts{"close"});
  EXPECT_EQ(house.settings.read("data", "left", ""), "100");
  EXPECT_TRUE(house.loop.has_quit());
}

TEST(LifeStory, ClosingWaitsForTheCommandOnTheLineAndTakesNoMore) {
  House house;
  FrmMain& form = house.open_connected();
  house.click_node("Kitchen");
  house.interface_control.mains_time = 8s;
  house.click(form.device[0], 1s);
  house.notes();
  house.close(4s);
  EXPECT_FALSE(house.loop.has_quit());
  EXPECT_FALSE(form.enabled) << "further presses are taken";
  EXPECT_EQ(house.wait().Label1.caption.get(), "Waiting for the last command");
  EXPECT_TRUE(house.notes().empty()) << "the port was closed";
  EXPECT_EQ(house.machine("KitchenKettle"), "(none)");
  house.loop.advance(6s);
  EXPECT_TRUE(house.loop.has_quit());
  EXPECT_EQ(house.notes(), Texts{"close"});
  EXPECT_EQ(house.machine("KitchenKettle"), "True") << "sent and not recorded";

  House stuck;
  stuck.open_connected();
  stuck.click_node("Kitchen");
  stuck.interface_control.mains_time = 1h;
  stuck.form().device[0].click();
  stuck.form().close_requested();
  stuck.loop.advance(29s);
  EXPECT_FALSE(stuck.loop.has_quit());
  stuck.loop.advance(2s);
  EXPECT_TRUE(stuck.loop.has_quit()) << "an interface that hangs keeps the program from ending";
}

TEST(LifeStory, AOnceEventOnItsWayAtTheEndIsSentRecordedAndRemoved) {
  const std::string daily = "Hall Lamp~B~12~100~12:01~on~daily~MTWHFSU~";
  EventHouse house("Kitchen Kettle~A~4~100~12:01~on~once~MTWHFSU~\r\n" + daily + "\r\n");
  house.open_connected_at(12, 0, 30);
  house.interface_control.mains_time = 3s;
  house.run_until(12, 1, 1);
  EXPECT_TRUE(house.form().sending);
  house.close(20s);
  EXPECT_TRUE(house.loop.has_quit());
  EXPECT_EQ(house.interface_control.line_log.size(), 2u);
  EXPECT_EQ(house.machine("HallLamp"), "True");
  EXPECT_EQ(house.event_lines(), Texts{daily}) << "it would run again next time";
}

TEST(LifeStory, TheWindowKeepsItsSizeAndFitsTheScreen) {
  House house;
  house.settings.write("data", "width", "12000");
  house.settings.write("data", "left", "99999");
  house.settings.write("data", "top", "-300");
  house.open_connected();
  EXPECT_EQ(house.form().left.get(), 100.0F) << "off the screen";
  EXPECT_EQ(house.form().top.get(), -300.0F);
  EXPECT_EQ(house.form().width.get(), 12000.0F);
  EXPECT_EQ(house.form().height.get(), 10800.0F);
  house.form().height = 9000.5F;
  house.close();
  EXPECT_EQ(house.settings.read("data", "width", ""), "12000");
  EXPECT_EQ(house.settings.read("data", "height", ""), "9000.5");

  for (const char* height : {"99999", "none"}) {
    House small;
    small.desktop.width = 13660;
    small.desktop.height = 7680;
    small.settings.write("data", "height", height);
    small.open(0s);
    EXPECT_EQ(small.form().left.get(), 0.0F);
    EXPECT_EQ(small.form().width.get(), 13660.0F);
    EXPECT_LT(small.form().top + small.form().height, 7680.0F)
        << "the status bar is off the screen";
  }
}

}  // namespace
}  // namespace homewarden::testing
