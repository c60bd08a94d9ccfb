// Presses that follow each other faster than the power line can carry them, and those that fail.

#include "tests/stories/house.h"

namespace homewarden::testing {
namespace {

const char* const kFiveLamps =
    "Den~One~A~1\r\nDen~Two~A~2\r\nDen~Three~A~3\r\nDen~Four~A~4\r\nDen~Five~A~5\r\n";

class PressStory : public ::testing::Test {
 protected:
  PressStory() : house(kFiveLamps) {
    for (const char* name : {"One", "Two", "Three", "Four", "Five"})
      house.settings.write("type", std::string("Den") + name, "bulb");
    house.loop.set_wall_clock(2023, 6, 21, 20, 0, 0);
    house.open_connected();  // two seconds later
    house.click_node("Den");
    house.interface_control.mains_time = 800ms;
  }
  FrmMain& form() { return house.form(); }
  std::vector<std::string> line() { return house.line(); }
  std::vector<CardState> cards() {
    std::vector<CardState> states;
    for (int i = 0; i < 5; ++i)
      states.push_back(form().cardface[static_cast<std::size_t>(i)].get().state);
    return states;
  }

  House house;
};

constexpr CardState kIdle = CardState::kIdle;
constexpr CardState kWaiting = CardState::kWaiting;
constexpr CardState kSending = CardState::kSending;

TEST_F(PressStory, FivePressesWithinASecondAreFiveCommandsInOrder) {
  for (std::size_t slot : {4u, 0u, 2u, 1u, 3u}) {  // Two, Five, One, Four, Three
    house.click(form().device[slot], 100ms);
  }
  EXPECT_THAT(cards(), ElementsAre(kWaiting, kWaiting, kWaiting, kWaiting, kSending));
  EXPECT_TRUE(form().enabled);
  house.loop.advance(10s);
  EXPECT_THAT(line(), ElementsAre("Wed 20:00:02 A2 2", "Wed 20:00:02 A5 2", "Wed 20:00:03 A1 2",
                                  "Wed 20:00:04 A4 2", "Wed 20:00:05 A3 2"));
  EXPECT_THAT(cards(), ElementsAre(kIdle, kIdle, kIdle, kIdle, kIdle));
  EXPECT_FALSE(form().sending);
}

TEST_F(PressStory, TheLastPositionOfASliderCountsAndSecondPressesUndoTheFirst) {
  form().device[0].click();  // Five: has the line
  house.slide(1, 40);        // Four
  house.slide(1, 60);
  form().device[2].click();  // One, twice: on and off again
  house.slide(1, 80);
  form().device[2].click();
  EXPECT_EQ(form().image1[1].value.get(), 80) << "the slider left where it was put";
  bool moved = false;  // and a hand that holds it would lose it
  form().image1[1].value.changed.connect([&moved] { moved = true; });
  house.loop.advance(20s);
  EXPECT_FALSE(moved);
  EXPECT_THAT(line(), ElementsAre(HasSubstr("A5 2"), HasSubstr("A4 2"), HasSubstr("A4 5"),
                                  HasSubstr("A4 4 20"), HasSubstr("A1 2"), HasSubstr("A1 3")));
  EXPECT_EQ(house.machine("dimDenFour"), "80");
  EXPECT_EQ(house.machine("DenOne"), "False");
}

// A lamp that is on would stay where it is with a mere On.
TEST_F(PressStory, ASliderAtTheTopIsFullBrightnessAndNeverOff) {
  house.slide(0, 100, 3s);
  EXPECT_THAT(line(), ElementsAre(HasSubstr("A5 2")));
  house.slide(0, 40, 5s);
  line();
  house.slide(0, 100, 5s);
  EXPECT_THAT(line(), ElementsAre(HasSubstr("A5 2"), HasSubstr("A5 5")));
  EXPECT_EQ(house.machine("DenFive"), "True");
  EXPECT_EQ(house.machine("dimDenFive"), "100");
  EXPECT_EQ(form().image1[0].value.get(), 100);
  house.slide(0, 40, 5s);
  line();
  form().txt_queue.text = "2A5~";  // a macro brings it up, too
  house.loop.advance(5s);
  EXPECT_THAT(line(), ElementsAre(HasSubstr("A5 2"), HasSubstr("A5 5")));
  EXPECT_EQ(house.machine("dimDenFive"), "100");
}

TEST_F(PressStory, NothingComesBetweenTheThreeCommandsOfALevel) {
  house.slide(0, 40, 100ms);
  house.web.request("index.html", "A~5~DenFive~turnoff~Den");
  house.loop.advance(10s);
  EXPECT_THAT(line(), ElementsAre(HasSubstr("A5 2"), HasSubstr("A5 5"), HasSubstr("A5 4 60"),
                                  HasSubstr("A5 3")));
  EXPECT_EQ(house.machine("DenFive"), "False");
  EXPECT_EQ(form().image1[0].value.get(), 20) << "the window does not show what the web did";
  EXPECT_THAT(form().device[0].file.get(), HasSubstr("bulboff"));
}

TEST_F(PressStory, WhatCouldNotBeSentIsMarkedUntilACommandGetsThrough) {
  house.interface_control.fails = true;
  house.slide(0, 40, 5s);
  EXPECT_THAT(line(), ElementsAre(HasSubstr("A5 2"))) << "dimmed from an unknown level";
  EXPECT_THAT(house.status(), HasSubstr("Could not DIM device with housecode A5 to 40% at "));
  EXPECT_EQ(house.machine("dimDenFive"), "40") << "recorded also when it failed";
  EXPECT_TRUE(form().lab_notsent[0].visible);
  house.click_node("Home");
  house.click_node("Den");
  EXPECT_TRUE(form().lab_notsent[0].visible);
  EXPECT_FALSE(form().lab_notsent[1].visible);

  form().lab_notsent[0].click();  // in vain
  EXPECT_FALSE(form().lab_notsent[1].visible);
  house.loop.advance(5s);
  EXPECT_TRUE(form().lab_notsent[0].visible);
  house.interface_control.fails = false;
  line();
  house.click(form().lab_notsent[0], 5s);
  EXPECT_THAT(line(), ElementsAre(HasSubstr("A5 2"), HasSubstr("A5 5"), HasSubstr("A5 4 60")));
  EXPECT_FALSE(form().lab_notsent[0].visible);

  house.interface_control.fails = true;
  house.click(form().device[0], 5s);
  EXPECT_TRUE(form().lab_notsent[0].visible);
  house.interface_control.CommandReceived("A5", 3);  // the wall reaches it
  house.loop.advance(1s);
  EXPECT_FALSE(form().lab_notsent[0].visible);
}

// Catches: a failure that the next success, of another device, wipes out; one of an address without
// a device that nobody hears of; marks that are not counted after a restart.
TEST_F(PressStory, WhatCouldNotBeSentIsCountedUntilItIsOrAPersonDismissesIt) {
  const auto told = [this] { return form().Statusbar.panel3_tip.get(); };
  house.interface_control.fails = true;
  form().txt_queue.text = "2P9~";
  house.web.request("index.html", "QQ~99~nothing~turnon~Den");  // no address at all
  house.click(form().device[0], 8s);
  EXPECT_EQ(told(), "2 commands could not be sent: Den Five, P9.");
  house.interface_control.fails = false;
  house.click(form().device[1], 5s);
  house.interface_control.TroubleChanged("");
  EXPECT_EQ(form().Statusbar.panel3.get(), "STATUS: Ready");
  EXPECT_EQ(form().Statusbar.unsent.caption.get(), "2 not sent");
  form().txt_queue.text = "3P9~";
  house.loop.advance(5s);
  EXPECT_EQ(told(), "1 command could not be sent: Den Five.");

  house.forget_program();
  house.open_connected();
  house.click_node("Den");
  EXPECT_EQ(told(), "1 command could not be sent: Den Five.");
  house.dialogs.says_yes = false;
  house.click(form().Statusbar.unsent, 1s);
  EXPECT_TRUE(form().Statusbar.unsent.visible);
  house.dialogs.says_yes = true;
  line();
  house.click(form().Statusbar.unsent, 1s);
  EXPECT_EQ(told(), "");
  EXPECT_FALSE(form().Statusbar.unsent.visible);
  EXPECT_FALSE(form().lab_notsent[0].visible);
  EXPECT_EQ(house.machine("DenFive"), "True");
  EXPECT_THAT(line(), IsEmpty());
}

TEST_F(PressStory, CardsFollowWhoeverRecords) {
  const auto shows_on = [this] {
    return form().device[0].file.get().find("bulbon") != std::string::npos;
  };
  house.receive("A5", 2, 1s);
  EXPECT_TRUE(shows_on());
  house.receive("A5", 4, 1s);
  EXPECT_TRUE(shows_on()) << "a Dim shows a lit lamp as off";
  house.web.request("index.html", "A~5~denfive~turnoff~Den");
  house.loop.advance(3s);
  EXPECT_FALSE(shows_on());
  house.set_machine("DenFive", "True");  // another process
  house.set_machine("dimDenFive", "60");
  house.loop.advance(1s);
  EXPECT_TRUE(shows_on());
  EXPECT_EQ(form().image1[0].value.get(), 60);
  form().txt_queue.text = "3A5~";
  house.loop.advance(5s);
  EXPECT_FALSE(shows_on());
}

TEST_F(PressStory, AWaitingPressOfADeviceThatGoesIsDroppedAndTheNextOneActs) {
  form().device[0].click();
  form().device[1].click();
  form().device[2].click();
  house.content("rmlst.hwd") =
      replace_all(kFiveLamps, "Den~Four~A~4", "Den~Four~A~9");  // another lamp of that name
  form().txt_roomname.text = "New";
  form().Command3.click();  // reads the list anew
  house.loop.advance(10s);
  EXPECT_THAT(line(), ElementsAre(HasSubstr("A5 2"), HasSubstr("A1 2")));
}

}  // namespace
}  // namespace homewarden::testing
