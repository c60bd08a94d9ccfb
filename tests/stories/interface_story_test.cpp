// The search for the interface, and the house while there is none.

#include "tests/stories/event_house.h"

namespace homewarden::testing {
namespace {

const char* const kLooking = "STATUS: No interface found, looking again";

// The seconds of uptime at which the interface was asked to open a port.
std::vector<long> seconds_of_opens(House& house) {
  std::vector<long> seconds;
  const auto times = house.interface_control.times();
  const auto notes = house.notes();
  for (std::size_t i = 0; i < notes.size(); ++i)
    if (notes[i] == "open") seconds.push_back((times[i] + 500) / 1000);
  return seconds;
}

TEST(InterfaceStory, AStoredPortThatDoesNotAnswerIsLookedAtUntilItDoes) {
  House house;
  house.loop.set_wall_clock(2023, 6, 21, 11, 59, 59, 500);
  house.interface_control.status_of_port[2] = 2;
  house.dialogs.is_away = true;
  house.open(14999ms);
  EXPECT_FALSE(house.form().enabled);
  EXPECT_TRUE(house.dialogs.messages.empty());
  house.loop.advance(1s);
  ASSERT_EQ(house.dialogs.messages.size(), 1u);
  EXPECT_THAT(house.dialogs.messages[0],
              HasSubstr("Error: ERROR: Could not initialize your X10 Home Control unit."));
  EXPECT_EQ(house.status(), "ERROR! Could not find your X10 Interface");
  EXPECT_TRUE(house.form().enabled);
  EXPECT_FALSE(house.form().connected);
  EXPECT_EQ(house.machine("port"), "2");

  house.loop.advance(200s);
  EXPECT_FALSE(house.loop.has_quit());
  EXPECT_EQ(seconds_of_opens(house), (std::vector<long>{1, 6, 11, 16, 21, 31, 51, 91, 151, 211}));
  EXPECT_EQ(house.form().Statusbar.panel3.get(), kLooking);
  EXPECT_FALSE(house.form().Statusbar.panel1.get().empty()) << "the clock stands still";
  EXPECT_EQ(house.status(), "Timer running, no events to run.") << "a look wrote there";
  EXPECT_EQ(house.dialogs.open_boxes, 1);

  house.interface_control.status_of_port[2] = 0;
  house.loop.advance(60s);
  EXPECT_EQ(house.dialogs.open_boxes, 0) << "the message stands though the interface answers";
  EXPECT_EQ(house.dialogs.messages.size(), 1u);
  EXPECT_EQ(house.notes(), Texts({"port 2", "open", "option 4", "client Homewarden"}));
  EXPECT_TRUE(house.form().connected);
  EXPECT_EQ(house.form().Statusbar.panel3.get(), "STATUS: Ready");
  EXPECT_THAT(house.status_texts, Contains(HasSubstr("interface on com port 2, timer ")).Times(0));
  EXPECT_THAT(house.status_texts, Contains(HasSubstr("Interface on com port 2, timer ")));
  house.loop.advance(300s);
  EXPECT_TRUE(house.notes().empty()) << "it looks on";
}

TEST(InterfaceStory, UnusableStoredPortIsSkippedInTheScan) {
  House house;
  house.interface_control.status_of_port = {{2, 1}, {4, 0}};
  house.open(1s);
  EXPECT_EQ(house.notes(), Texts({"port 2", "open", "port 1", "open", "port 3", "open", "port 4",
                                  "open", "option 4", "client Homewarden"}));
  EXPECT_EQ(house.machine("port"), "4");
  EXPECT_TRUE(house.form().connected);
}

TEST(InterfaceStory, PortsThatMayNotBeOpenedAreToldUntilAnInterfaceAnswers) {
  House house;
  house.interface_control.status_of_port.clear();
  house.interface_control.refused = "You may not open it.";
  house.dialogs.is_away = true;
  house.open(1s);
  EXPECT_EQ(house.form().lab_notice.caption.get(), "You may not open it.");
  EXPECT_EQ(house.status(), "ERROR! Could not find your X10 Interface") << "the notice hides it";
  house.interface_control.status_of_port[3] = 0;
  house.loop.advance(60s);
  EXPECT_EQ(house.form().lab_notice.caption.get(), "") << "other ports may stay forbidden";
}

TEST(InterfaceStory, NoInterfaceAnywhereAndThenOneByHand) {
  House house;
  house.interface_control.status_of_port.clear();
  house.set_machine("port", "none");
  house.open(1s);
  EXPECT_EQ(house.notes().size(), 30u);
  ASSERT_EQ(house.dialogs.messages.size(), 1u);
  EXPECT_THAT(house.dialogs.messages[0], HasSubstr("ERROR!: Sorry, Could not find a CM11 or CM12"));
  EXPECT_TRUE(house.form().enabled);
  EXPECT_FALSE(house.form().connected);
  EXPECT_EQ(house.form().Statusbar.panel3.get(), kLooking);

  const auto told = house.status_texts.size();
  house.form().Label63.click();  // Cancel
  house.loop.run_pending();
  EXPECT_EQ(house.dialogs.messages.size(), 2u) << "Cancel was answered";
  EXPECT_EQ(house.machine("port"), "none");
  house.loop.advance(6s);
  EXPECT_EQ(house.notes().size(), 30u) << "Cancel ended the looking";
  EXPECT_TRUE(house.form().enabled);
  EXPECT_EQ(house.status_texts.size(), told);

  for (const char* silly : {"0", "16", "two", ""}) {
    house.dialogs.typed = {silly};
    house.click(house.form().Label63);
    EXPECT_EQ(house.dialogs.messages.back(),
              "Error: Sorry, that was a silly number. Please try again");
    EXPECT_EQ(house.machine("port"), "none");
  }
  house.interface_control.status_of_port[7] = 0;
  house.dialogs.typed = {"7"};
  house.click(house.form().Label63);
  EXPECT_EQ(house.machine("port"), "7");
  EXPECT_TRUE(house.form().connected);
}

// A look that goes on beside a search, or answers after it.
TEST(InterfaceStory, AClickEndsTheLookThatRunsAndItsMessage) {
  House house;
  house.interface_control.status_of_port = {{2, 2}};
  house.dialogs.is_away = true;
  house.open(18s);
  house.notes();
  house.interface_control.opening_time = 3s;
  house.loop.advance(4s);
  EXPECT_EQ(house.notes(), Texts({"port 2", "open"}));
  house.interface_control.status_of_port[5] = 0;
  EXPECT_EQ(house.dialogs.open_boxes, 1);
  house.interface_control.refuses_close = true;
  house.form().Label51.click();
  EXPECT_EQ(house.dialogs.open_boxes, 0);
  house.loop.advance(1s);
  EXPECT_FALSE(house.form().enabled);
  house.loop.advance(60s);
  EXPECT_EQ(house.notes(),
            Texts({"close", "close", "port 1", "open", "port 2", "open", "port 3", "open", "port 4",
                   "open", "port 5", "open", "option 4", "client Homewarden"}));
  EXPECT_TRUE(house.form().enabled);
}

TEST(InterfaceStory, AnEventThatComesDueWithoutAnInterfaceIsTried) {
  EventHouse house("Hall Lamp B12~B~12~100~12:01~on~daily~MTWHFSU~\r\n");
  house.loop.set_wall_clock(2023, 6, 21, 12, 0, 0);
  house.interface_control.status_of_port.clear();
  house.open();
  house.run_until(12, 1, 5);
  EXPECT_EQ(house.line(), Texts{"Wed 12:01:00 B12 2"});
}

TEST(InterfaceStory, ClosingEndsTheLooks) {
  House house;
  house.interface_control.status_of_port = {{2, 2}};
  house.interface_control.opening_time = 3s;
  house.dialogs.is_away = true;
  house.open(35s);
  house.notes();
  house.services.obeys = false;  // the end takes two seconds
  house.form().chk_service.checked = true;
  house.close(1s);
  EXPECT_EQ(house.notes(), Texts{"close"});
  EXPECT_EQ(house.dialogs.open_boxes, 0);
  house.click(house.form().Label51, 5s);
  EXPECT_TRUE(house.notes().empty()) << "a port was opened after the end";
  EXPECT_TRUE(house.loop.has_quit());
}

}  // namespace
}  // namespace homewarden::testing
