// The house reacts: commands from the power line, macros and the queue.

#include "tests/stories/event_house.h"

namespace homewarden::testing {
namespace {

const char* const kWallToLamp = "When~A4~Kitchen~Kettle~turns~on~Turn~On~B12~Hall~Lamp\r\n";

class ReactionStory : public ::testing::Test {
 protected:
  FrmMain& open(const std::string& macros, const std::string& rooms = {}) {
    if (!rooms.empty()) house.content("rmlst.hwd") = rooms;
    if (!macros.empty()) house.content("macs.hlk") = macros;
    house.loop.set_wall_clock(2023, 6, 21, 20, 0, 0);
    FrmMain& form = house.open_connected();
    house.interface_control.mains_time = 800ms;
    return form;
  }
  Texts line() { return house.line(); }
  void click_macro(int row) {
    house.form().ListVIew2.selected = row;
    house.form().ListVIew2.mouse_down();
    house.loop.advance(1s);
  }

  EventHouse house;
};

TEST_F(ReactionStory, AButtonOnTheWallSwitchesASecondLampThroughAMacro) {
  FrmMain& form = open(kWallToLamp);
  house.click_node("Hall");
  house.status_texts.clear();
  house.receive("A4", 2);  // 20:00:02
  house.loop.advance(10ms);
  EXPECT_EQ(house.machine("KitchenKettle"), "True");
  EXPECT_EQ(form.device[0].file.get(), "/house/html/bulb2off.gif") << "of another room's";
  EXPECT_EQ(form.txt_queue.text.get(), "2B12~");
  EXPECT_THAT(line(), IsEmpty()) << "a macro switches through the queue";
  house.loop.advance(5s);
  EXPECT_THAT(line(), ElementsAre("Wed 20:00:04 B12 2"));
  EXPECT_EQ(form.txt_queue.text.get(), "");
  EXPECT_EQ(house.machine("HallLamp"), "True");
  EXPECT_EQ(house.machine("dimHallLamp"), "100");
  EXPECT_EQ(form.device[0].file.get(), "/house/html/bulb2on.gif");
  EXPECT_THAT(house.status_texts, ElementsAre("Incoming command from X10, A4, 2, at 20:00",
                                              "Macro created and added to queue",
                                              "Incoming message, Kettle has turned on at 20:00:02",
                                              "Turned ON device with housecode B12 at 20:00:04",
                                              "Incoming message, Lamp has turned on at 20:00:06"));
}

TEST_F(ReactionStory, TheQueueSendsOneAfterTheOtherAndDropsDoubles) {
  FrmMain& form = open("");
  form.txt_queue.text = "2A3~2A3~9A1~3Q4~junk~2A4~3A3~";
  house.loop.advance(30s);
  EXPECT_THAT(line(), ElementsAre("Wed 20:00:04 A3 2", "Wed 20:00:14 A4 2", "Wed 20:00:18 A3 3"))
      << "one each tick, and what cannot be sent costs its own tick";
  EXPECT_EQ(form.txt_queue.text.get(), "");

  form.txt_queue.text = "2A4~";
  form.sending = true;
  house.loop.advance(10s);
  EXPECT_THAT(line(), IsEmpty()) << "another command was being sent";
  form.sending = false;
  form.txt_queue.text = "2A4";  // cut off
  house.loop.advance(10s);
  EXPECT_THAT(line(), SizeIs(1));
}

TEST_F(ReactionStory, AChainOfThreeMacrosAndOneThatLoops) {
  FrmMain& form = open(
      "When~A3~Kitchen~Table~Lamp~turns~dim~Turn~On~A4~Kitchen~Kettle\r\n"
      "When~A4~Kitchen~Kettle~turns~on~Turn~On~B12~Hall~Lamp\r\n"
      "When~B12~Hall~Lamp~turns~on~Turn~Off~A3~Kitchen~Table~Lamp\r\n");
  house.click_node("Kitchen");
  house.slide(1, 60, 20s);
  const auto log = line();
  ASSERT_THAT(log, SizeIs(6));
  EXPECT_THAT(log[3], HasSubstr("A4 2"));
  EXPECT_THAT(log[4], HasSubstr("B12 2"));
  EXPECT_THAT(log[5], HasSubstr("A3 3"));
  EXPECT_EQ(form.txt_queue.text.get(), "");

  house.content("macs.hlk") =
      "When~A4~Kettle~turns~on~Turn~Off~A4~Kettle\r\nWhen~A4~Kettle~turns~off~Turn~On~A4~"
      "Kettle\r\n";
  house.receive("A4", 3, 60s);
  EXPECT_GT(line().size(), 10u);
  EXPECT_LT(form.txt_queue.text.get().size(), 10u) << "the queue grows";
  EXPECT_TRUE(form.enabled);
}

TEST_F(ReactionStory, IncomingCommandsAreHandledInTheirOrderAndNoneIsLost) {
  FrmMain& form = open(kWallToLamp);
  house.click_node("Kitchen");
  form.device[1].click();  // a command is being sent
  house.status_texts.clear();
  for (int i = 0; i < 3; ++i) {
    house.receive("A04", 2);
    house.receive("A4", 3);
  }
  house.receive("B12", 4);
  house.receive("C9", 3, 100ms);
  Texts seen;
  for (const std::string& text : house.status_texts)
    if (text.starts_with("Incoming command")) seen.push_back(text.substr(27, 7));
  EXPECT_THAT(seen, ElementsAre("A4, 2, ", "A4, 3, ", "A4, 2, ", "A4, 3, ", "A4, 2, ", "A4, 3, ",
                                "B12, 4,", "C9, 3, "));
  EXPECT_EQ(house.machine("KitchenKettle"), "False");
  EXPECT_EQ(house.machine("HallLamp"), "(none)") << "a Dim records nothing";
  EXPECT_EQ(form.txt_queue.text.get(), "2B12~2B12~2B12~");
  EXPECT_TRUE(form.sending) << "the macro scan released the queue under another command";
  house.loop.advance(20s);
  EXPECT_THAT(line(), SizeIs(2)) << "the lamp by hand, the other one once";
}

TEST_F(ReactionStory, AnOnWithoutALevelKeepsTheOneTheLampHas) {
  FrmMain& form = open("");
  house.click_node("Hall");
  house.slide(0, 40, 10s);
  house.receive("B12", 2, 1s);
  EXPECT_EQ(house.machine("dimHallLamp"), "40");
  EXPECT_EQ(form.image1[0].value.get(), 40);
  house.receive("B12", 3, 1s);
  EXPECT_EQ(house.machine("HallLamp"), "False");
  EXPECT_EQ(form.device[0].file.get(), "/house/html/bulb2off.gif");
  house.receive("B12", 2, 1s);
  EXPECT_EQ(house.machine("dimHallLamp"), "100") << "a lamp that was off comes on fully";
}

TEST_F(ReactionStory, MacrosAreSavedListedAndDeleted) {
  FrmMain& form = open("");
  house.dialogs.messages.clear();
  form.com_sel1.text = std::string();
  house.click(form.com_savemacro, 1s);
  EXPECT_THAT(house.dialogs.messages, ElementsAre(HasSubstr("Please check: Please choose the")));
  EXPECT_FALSE(house.files.contents.contains(House::file("macs.hlk")));

  form.com_sel1.text = "Hall Lamp B12";
  form.com_sel2.text = "Kitchen Kettle A4";
  house.click(form.com_savemacro, 1s);
  EXPECT_EQ(house.content("macs.hlk"), "When~B12~Hall~Lamp~turns~on~Turn~On~A4~Kitchen~Kettle\r\n");
  EXPECT_THAT(form.ListVIew2.items.get(),
              ElementsAre("When B12 Hall Lamp turns on Turn On A4 Kitchen Kettle"));

  // the other way round goes on for ever
  house.dialogs.messages.clear();
  house.dialogs.says_yes = false;
  form.com_sel1.text = "Kitchen Kettle A4";
  form.com_sel2.text = "Hall Lamp B12";
  house.click(form.com_savemacro, 1s);
  EXPECT_THAT(house.dialogs.messages,
              ElementsAre(HasSubstr("When Kitchen Kettle A4 turns on\r\nthen Hall Lamp B12 turns "
                                    "on\r\nthen Kitchen Kettle A4 turns on, and so on.")));
  EXPECT_THAT(form.ListVIew2.items.get(), SizeIs(1));
  house.dialogs.says_yes = true;
  house.click(form.com_savemacro, 1s);
  EXPECT_THAT(form.ListVIew2.items.get(), SizeIs(2)) << "the person may save it all the same";

  click_macro(-1);
  EXPECT_THAT(form.ListVIew2.items.get(), SizeIs(2)) << "nothing was selected";
  click_macro(0);
  EXPECT_THAT(form.ListVIew2.items.get(),
              ElementsAre("When A4 Kitchen Kettle turns on Turn On B12 Hall Lamp"));
  EXPECT_EQ(house.dialogs.messages.back(),
            "Delete?: Do you want to delete the selected Macro?\r\n\r\n"
            "When B12 Hall Lamp turns on Turn On A4 Kitchen Kettle");
  EXPECT_EQ(house.dialogs.last.preselected, Answer::kNo);
  click_macro(0);
  click_macro(-1);
  EXPECT_EQ(house.dialogs.messages.back(), "No Macros: You dont have any macros to delete");
}

TEST_F(ReactionStory, AMacroIsDeletedOnceAndNoOtherWithIt) {
  const std::string fan = "When~A4~Kitchen~Kettle~turns~on~Turn~On~B12~Porch~Fan";
  FrmMain& form = open("\xEF\xBB\xBF" + fan + "~Two\r\n" + fan + "\r\n");
  ASSERT_THAT(form.ListVIew2.items.get(), SizeIs(2));
  EXPECT_TRUE(form.ListVIew2.items.get()[0].starts_with("When")) << "a byte-order mark is shown";
  form.ListVIew2.selected = 1;
  form.ListVIew2.mouse_down();
  form.ListVIew2.mouse_down();  // by the second answer it has gone
  house.loop.advance(1s);
  EXPECT_EQ(house.content("macs.hlk"), fan + "~Two\r\n");
}

}  // namespace
}  // namespace homewarden::testing
