// The home page: what is on, what comes next, how the interface is, and the beginning of a house.

#include "core/house/status_subject.h"
#include "tests/stories/event_house.h"
#include "ui/status_words.h"

namespace homewarden::testing {
namespace {

const char* const kLamps =
    "Den~One~A~1\r\nDen~Two~A~2\r\nGarden~~~\r\nHall~Bell~B~1\r\nHall~Lamp~B~2\r\n";

class HomeStory : public ::testing::Test {
 protected:
  HomeStory() : house(kLamps) {
    for (const char* lamp : {"DenOne", "DenTwo"}) house.settings.write("type", lamp, "bulb");
  }
  FrmMain& form() { return house.form(); }
  void open() {
    house.files.contents[House::file("rmlst.hwd")] = kLamps;
    house.loop.set_wall_clock(2023, 6, 21, 20, 0, 0);
    house.open_connected();
    house.interface_control.mains_time = 800ms;
  }
  // "DenOne 40", with what is under way: w for waiting, s for sending, ! for not sent.
  Texts chips() {
    Texts texts;
    for (const HomeChip& chip : form().chips.get())
      texts.push_back(chip.key + " " + std::to_string(chip.level) +
                      std::string(1, " ws!"[static_cast<int>(chip.state)]));
    for (std::string& text : texts)
      if (text.back() == ' ') text.pop_back();
    return texts;
  }
  std::string tiles() {
    std::string text;
    for (const RoomTile& tile : form().tiles.get()) {
      text += tile.name + ":";
      for (const bool on : tile.on) text += on ? "*" : "o";
      text += " ";
    }
    return text;
  }
  std::string heading() { return form().lab_home.caption; }
  void press(const std::string& key, House::Time length = 0ms) {
    form().chip_pressed(key);
    house.loop.advance(length);
  }

  EventHouse house;
};

// Catches: a page that shows what the window switched and not what the power line or an event did.
TEST_F(HomeStory, SaysWhatIsOnWhoeverSwitchedIt) {
  house.files.contents[House::file("evelst.hwd")] = "Den Two~A~2~40~20:01~on~daily~mtwufsr\r\n";
  open();
  EXPECT_EQ(heading(), "Everything is off");
  EXPECT_FALSE(form().cmd_alloff.visible);
  EXPECT_EQ(tiles(), "Den:oo Garden: Hall:oo ");
  house.receive("B1", 2, 10ms);
  EXPECT_EQ(heading(), "1 device is on");
  EXPECT_THAT(chips(), ElementsAre("HallBell 100"));
  house.loop.advance(70s);
  EXPECT_EQ(heading(), "2 devices are on");
  EXPECT_THAT(chips(), ElementsAre("DenTwo 40", "HallBell 100"));
  EXPECT_EQ(tiles(), "Den:o* Garden: Hall:*o ");

  form().tile_pressed("Den");
  EXPECT_EQ(form().lab_room.caption.get(), "Den");
  house.receive("B1", 3, 10ms);
  house.click_node("Home");
  EXPECT_THAT(chips(), ElementsAre("DenTwo 40")) << "the page was not brought up to date";
}

// Catches: a chip that goes under the pointer, so that the second of two clicks switches another
// device; a failure that nobody sees.
TEST_F(HomeStory, AChipShowsItsPressAndStaysAMinute) {
  open();
  for (const char* address : {"A1", "B1"}) house.receive(address, 2, 10ms);
  press("DenOne", 10ms);
  press("HallBell", 10ms);
  EXPECT_THAT(chips(), ElementsAre("DenOne 100s", "HallBell 100w"));
  house.loop.advance(10s);
  EXPECT_THAT(house.line(), ElementsAre(EndsWith("A1 3"), EndsWith("B1 3")));
  EXPECT_THAT(chips(), ElementsAre("DenOne 0", "HallBell 0"));
  EXPECT_EQ(heading(), "Everything is off");
  press("DenOne", 5s);
  EXPECT_THAT(house.line(), ElementsAre(EndsWith("A1 2")));
  house.loop.advance(60s);
  EXPECT_THAT(chips(), ElementsAre("DenOne 100")) << "what is off stays for good";

  house.interface_control.fails = true;
  press("DenOne", 5s);
  EXPECT_THAT(chips(), ElementsAre("DenOne 0!"));
  house.interface_control.fails = false;
  house.line();
  press("DenOne", 5s);
  EXPECT_THAT(house.line(), ElementsAre(EndsWith("A1 3"))) << "it was to be off";
  form().connected = false;
  press("DenOne");
  EXPECT_THAT(house.dialogs.messages.back(), StartsWith("not possible!"));
}

// Catches: a lamp that is sent twice or comes back at another level, an Undo that outlives its use.
TEST_F(HomeStory, EverythingIsTurnedOffOnceAndBackOnAsItWas) {
  open();
  form().chip_pressed("HallBell");
  house.click_node("Den");
  house.slide(1, 40, 5s);  // Two
  house.click_node("Home");
  press("HallLamp", 5s);
  house.line();
  ASSERT_THAT(chips(), ElementsAre("DenTwo 40", "HallBell 100", "HallLamp 100"));

  press("HallLamp");  // waits to be turned off already
  house.click(form().cmd_alloff, 10ms);
  EXPECT_EQ(form().cmd_alloff.caption.get(), "Undo");
  house.loop.advance(20s);
  EXPECT_THAT(house.line(), ElementsAre(EndsWith("B2 3"), EndsWith("A2 3"), EndsWith("B1 3")));
  EXPECT_EQ(heading(), "Everything is off");
  house.click(form().cmd_alloff, 20s);
  EXPECT_THAT(chips(), ElementsAre("DenTwo 40", "HallBell 100", "HallLamp 0"));
  EXPECT_EQ(form().cmd_alloff.caption.get(), "Turn all off");

  house.click(form().cmd_alloff, 20s);
  house.loop.advance(61s);
  EXPECT_FALSE(form().cmd_alloff.visible) << "an Undo that nobody remembers the reason of";
}

// Catches: words that are right only when the page comes up, or wrong when the day ends.
TEST_F(HomeStory, TheNextEventsAreSaidInWordsThatKeepUpWithTheClock) {
  house.files.contents[House::file("evelst.hwd")] =
      "Den One~A~1~40~20:05~on~daily~mtwufsr\r\nHall Lamp~B~2~ ~sSet:+1~off~daily~mtwufsr\r\n"
      "Hall Bell~B~1~100~sRise:00~on~daily~mtwufsr\r\nGone Lamp~C~1~100~20:30~on~daily~w\r\n";
  open();
  const auto coming = [this] {
    Texts texts;
    for (const ComingEvent& event : form().coming.get())
      texts.push_back(event.time + " " + event.what + ". " + event.when);
    return texts;
  };
  EXPECT_EQ(form().lab_today.caption.get(), "Wednesday 21 June, sunset at 20:18");
  EXPECT_THAT(coming(), ElementsAre("20:05 One on at 40\xA0%. In 5 min",
                                    "21:18 Lamp off. 1 hour after sunset, tonight",
                                    "03:45 Bell on. At sunrise, tomorrow"));
  house.run_until(20, 4, 1);
  EXPECT_THAT(coming()[0], EndsWith("In 1 min"));
  house.run_until(20, 19, 1);
  EXPECT_EQ(form().lab_today.caption.get(), "Wednesday 21 June, sunset was at 20:18");
  EXPECT_THAT(coming(), ElementsAre("21:18 Lamp off. 1 hour after sunset, in 59 min",
                                    "03:45 Bell on. At sunrise, tomorrow",
                                    "20:05 One on at 40\xA0%. Tomorrow"));
  house.run_until(0, 0, 1);
  EXPECT_EQ(form().lab_today.caption.get(), "Thursday 22 June, sunrise at 03:45");
  form().Check1.checked = true;
  house.loop.advance(10ms);
  EXPECT_EQ(coming()[0], "04:45 Bell on. At sunrise, today") << "daylight saving was not heard of";
}

TEST_F(HomeStory, TheInterfaceIsSaidWithTheOneActionItNeeds) {
  house.interface_control.status_of_port.clear();
  house.interface_control.refused = "You may not open it. Run \"sudo usermod -aG dialout anna\".";
  house.dialogs.is_away = true;
  house.open(5s);
  EXPECT_EQ(form().condition.get(), InterfaceCondition::kRefused);
  EXPECT_EQ(form().lab_command.caption.get(), "sudo usermod -aG dialout anna");
  house.interface_control.refused = "";
  house.loop.advance(10s);
  EXPECT_EQ(form().condition.get(), InterfaceCondition::kMissing);
  EXPECT_TRUE(form().cmd_look.visible);
  house.interface_control.status_of_port[3] = 0;
  house.click(form().cmd_look, 5s);
  EXPECT_EQ(form().condition.get(), InterfaceCondition::kConnected);
  EXPECT_EQ(form().lab_interface.caption.get(), "Interface connected on port 3");
  EXPECT_FALSE(form().cmd_look.visible);
  house.interface_control.TroubleChanged("STATUS: Interface unplugged, looking for it");
  EXPECT_EQ(form().condition.get(), InterfaceCondition::kUnplugged);
  house.interface_control.TroubleChanged("STATUS: A1 On could not be sent, no answer");
  EXPECT_EQ(form().condition.get(), InterfaceCondition::kTrouble);
  EXPECT_EQ(form().lab_interface.caption.get(), "A1 On could not be sent, no answer");
  house.interface_control.TroubleChanged("");
  EXPECT_EQ(form().condition.get(), InterfaceCondition::kConnected);
}

TEST_F(HomeStory, TheStatusLineNamesRoomAndDevice) {
  open();
  EXPECT_THAT(house.status_texts, Contains(HasSubstr("on com port 2, timer ")));
  EXPECT_EQ(status_words("Found and Initialized Interface on com port 2, timer 26000"),
            "Found and Initialized Interface on com port 2");
  house.click_node("One~A~1", 3s);
  EXPECT_THAT(house.status(), StartsWith("Turned ON device with housecode A1"));
  EXPECT_EQ(form().Statusbar.subject.get(), "Den, One");
  form().Statusbar.panel2 = "A2 On could not be sent";
  EXPECT_EQ(form().Statusbar.subject.get(), "Den, Two");
  for (const char* nobody : {"Turned ON device with housecode A12 at 10:00:00", "A2 On was sent",
                             "Turned ON device with housecode ", "", "housecode A1x"}) {
    form().Statusbar.panel2 = nobody;
    EXPECT_EQ(form().Statusbar.subject.get(), "") << nobody;
  }
}

// Catches: a room that is gone and would be selected, a panel that hides what start-up shows.
TEST_F(HomeStory, OpenRoomsAndTheLastPanelComeBack) {
  open();
  form().Tree.open_rooms = {"Den", "Hall"};
  house.click_node("One~A~1", 3s);
  house.close(10s);
  EXPECT_EQ(house.settings.read("data", "openrooms", ""), "Den~Hall");

  House later("Den~One~A~1\r\n");
  later.settings.write("data", "openrooms", "Den~Hall");
  later.settings.write("data", "panel", "Den");
  later.settings.write("data", "sidewidth", "300");
  later.open_connected();
  EXPECT_EQ(later.form().Tree.open_rooms.get(), std::set<std::string>{"Den"});
  EXPECT_EQ(later.form().side_width.get(), 300);
  EXPECT_EQ(later.form().lab_room.caption.get(), "Den");
  EXPECT_TRUE(later.form().frm_devices.visible);
  later.click(later.form().cmd_settings);
  EXPECT_TRUE(later.form().frm_settings.visible && !later.form().frm_devices.visible);
  later.close(10s);
  EXPECT_EQ(later.settings.read("data", "panel", "-"), "");
}

// Catches: a box in the way of a newcomer; a lamp that is saved and not tried, or tried twice.
TEST(FirstRunStory, FromNothingToALampThatSwitches) {
  House house("");
  house.interface_control.status_of_port.clear();
  FrmMain& form = house.open(5s).frm_main;
  ASSERT_TRUE(form.is_first_run);
  EXPECT_TRUE(house.dialogs.messages.empty());
  EXPECT_THAT(form.lab_notfound.caption.get(), StartsWith("Sorry, Could not find a CM11"));
  EXPECT_TRUE(form.lab_notfound.visible);
  house.click(form.cmd_demo);
  EXPECT_EQ(house.desktop.demos, 1);
  form.first_run_left();
  EXPECT_TRUE(form.is_first_run) << "there is nothing else to show";

  form.txt_roomname.text = "Den";
  house.click(form.Command3, 1s);
  EXPECT_EQ(form.step.get(), FirstStep::kLamp);
  EXPECT_TRUE(form.is_first_run && form.frm_home.visible);
  form.txt_devname.text = "Lamp";
  house.click(form.cmd_try, 1s);
  EXPECT_EQ(form.step.get(), FirstStep::kTry);
  EXPECT_THAT(form.lab_firstlamp.caption.get(), StartsWith("Lamp is saved."));
  EXPECT_THAT(form.lab_lamphint.caption.get(), HasSubstr("to A1,"));
  EXPECT_THAT(form.lab_firststeps.caption.get(), EndsWith("switches: connect the interface."));
  std::vector<int> ports;
  form.search.changed.connect([&] { ports.push_back(form.search.get().port); });
  house.click(form.Label51, 10s);
  EXPECT_THAT(ports, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 0));
  EXPECT_TRUE(house.dialogs.messages.empty());

  house.interface_control.status_of_port[2] = 0;
  house.loop.advance(6s);
  EXPECT_FALSE(form.lab_notfound.visible) << "somebody stands before the page and waits";
  EXPECT_THAT(form.lab_firststeps.caption.get(), StartsWith("One more step: press"));
  house.click(form.cmd_try, 3s);
  EXPECT_THAT(form.lab_firststeps.caption.get(), StartsWith("That is all."));
  EXPECT_THAT(house.line(), ElementsAre(EndsWith("A1 2")));
  EXPECT_EQ(form.lab_firstlamp.caption.get(), "Lamp is on");
  house.click(form.cmd_open);
  EXPECT_EQ(form.lab_room.caption.get(), "Den");
  EXPECT_EQ(form.cardface[0].get().dimmable, true);
  EXPECT_FALSE(form.is_first_run);
  EXPECT_EQ(form.lst_devicetype.text.get(), "Appliance Module (not dimmable)");
}

// Catches: the page of an empty house for a house whose list cannot be read.
TEST(FirstRunStory, AHouseThatCannotBeReadIsNoNewHouse) {
  House house;
  house.files.unreadable.insert(House::file("rmlst.hwd"));
  house.open(5s);
  EXPECT_FALSE(house.form().is_first_run);
}

}  // namespace
}  // namespace homewarden::testing
