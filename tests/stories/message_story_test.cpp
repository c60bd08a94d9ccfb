// What has happened can be read again, and what was deleted comes back.

#include "tests/stories/edit_house.h"

namespace homewarden::testing {
namespace {

const char* const kMacros =
    "When~A1~Kitchen~Lamp~turns~on~Turn~On~B2~Hall~Lamp\r\n"
    "When~B2~Hall~Lamp~turns~on~Turn~Off~B3~Town Hall~Lamp\r\n";

class MessageStory : public HouseEditStory {
 protected:
  Texts told() {
    Texts texts;
    for (const auto& message : house.form().messages.get()) texts.push_back(message.text);
    return texts;
  }
  const MessageEntry& message() { return house.form().message; }
  void undo(House::Time length = 20s) {
    house.form().undo_latest_asked();
    house.loop.advance(length);
  }
};

// Catches: a success that wipes the failure before it out of sight, one that counts as read because
// its eight seconds are over, and a timer that runs on when nothing is shown.
TEST_F(MessageStory, AFailureStaysUnreadUntilSomebodyHasSeenIt) {
  FrmMain& form = open(kKitchens);
  EXPECT_FALSE(form.timermessage.enabled());
  house.click_node("Kitchen");
  form.filebusy = true;
  form.moved_to(1, "Hall");
  house.click_node("Home");
  house.content("rmlst.hwd") += "Hall~Lamp2~D~1\r\n";
  form.filebusy = false;
  house.loop.advance(3s);
  EXPECT_TRUE(message().failed) << "nobody hears why the device did not move";
  EXPECT_THAT(message().text, StartsWith("Kitchen, Lamp2 was not moved to Hall: "));
  delete_item("Lamp~A~1", 1s);
  for (int second = 0; second < 30 && !message().undoable; ++second) house.loop.advance(1s);
  EXPECT_EQ(message().text, "Deleted: Kitchen, Lamp");
  EXPECT_TRUE(form.timermessage.enabled());
  form.message_held = true;
  house.loop.advance(60s);
  EXPECT_EQ(message().text, "Deleted: Kitchen, Lamp") << "gone under the pointer";
  form.message_held = false;
  house.loop.advance(8500ms);
  EXPECT_EQ(message().id, 0u);
  EXPECT_FALSE(form.timermessage.enabled());
  EXPECT_EQ(form.unread.get(), 1);
  form.messages_asked();
  EXPECT_THAT(told(), ElementsAre("Deleted: Kitchen, Lamp", StartsWith("Kitchen, Lamp2 was not")));
  EXPECT_EQ(form.unread.get(), 0);
}

// Catches: anything that a deletion takes and its undoing does not bring, lines in another place
// than before, a second undoing that doubles them.
TEST_F(MessageStory, ADeletedDeviceComesBackAsItWas) {
  house.content("macs.hlk") = kMacros;
  FrmMain& form = open(kKitchens, kKitchenEvents);
  house.settings.write("type", "KitchenLamp", "bulb");
  house.set_machine("KitchenLamp", "True");
  house.set_machine("dimKitchenLamp", "40");
  delete_item("Lamp~A~1");
  EXPECT_FALSE(form.Tree.find("Lamp~A~1"));
  undo();
  undo();
  EXPECT_EQ(rooms(), kKitchens);
  EXPECT_EQ(events(), kKitchenEvents);
  EXPECT_EQ(macros(), kMacros);
  EXPECT_EQ(house.settings.read("type", "KitchenLamp", ""), "bulb");
  EXPECT_EQ(house.machine("KitchenLamp") + house.machine("dimKitchenLamp"), "True40");
  EXPECT_TRUE(form.Tree.find("Lamp~A~1"));
  EXPECT_THAT(form.ListView1.rows.get(), SizeIs(4));
  EXPECT_THAT(told(), ElementsAre("Kitchen, Lamp is back.", "Deleted: Kitchen, Lamp"));

  delete_item("Kitchen");
  undo();
  EXPECT_EQ(rooms() + events() + macros(), std::string(kKitchens) + kKitchenEvents + kMacros);
}

// Catches: events that come back into the profile of somebody else, and devices that come twice or
// over what was added meanwhile.
TEST_F(MessageStory, WhatCameMeanwhileIsNeitherDoubledNorOverwritten) {
  FrmMain& form = open(kKitchens, kKitchenEvents);
  house.settings.write("type", "KitchenLamp", "bulb");
  const std::string holiday = "Hall Lamp~B~2~ ~09:00~off~daily~m\r\n";
  house.content("Holiday.txt") = holiday;
  delete_item("Lamp~A~1");
  form.com_profile.text = "Holiday";
  house.click(form.com_profile, 20s);
  ASSERT_EQ(events(), holiday);
  undo();
  EXPECT_EQ(events(), holiday);
  EXPECT_EQ(house.content("Standard.txt"), kKitchenEvents);

  delete_item("Lamp~A~1");
  add_device("Kitchen", "Lamp", "A", "1", "Radio (appliance module)");
  const std::string type = house.settings.read("type", "KitchenLamp", "");
  ASSERT_NE(type, "bulb");
  undo();
  EXPECT_EQ(house.settings.read("type", "KitchenLamp", ""), type);
  const std::string list = rooms();
  EXPECT_EQ(list.find("Kitchen~Lamp~A~1"), list.rfind("Kitchen~Lamp~A~1"));

  delete_item("Lamp~A~1");
  add_device("Kitchen", "Lamp", "P", "16", "");
  undo();
  EXPECT_THAT(told().front(), StartsWith("Kitchen, Lamp is not back: "));
  EXPECT_TRUE(form.messages.get().front().failed && form.messages.get().front().undoable);
  EXPECT_THAT(rooms(), Not(HasSubstr("Kitchen~Lamp~A~1")));
  delete_item("Lamp~P~16");
  add_device("Hall", "Fan", "A", "1", "");
  form.undo_asked(form.messages.get()[1].id);
  house.loop.advance(20s);
  EXPECT_THAT(rooms(), HasSubstr("Kitchen~Lamp~A~1"));
  EXPECT_EQ(
      house.status(),
      "Kitchen, Lamp is back. Hall, Fan has the address of Lamp: both are switched together.");
}

// Catches: an offer of the event page that the list does not have, or has longer than the page, and
// a box whose words are gone with it.
TEST_F(MessageStory, WhatPagesOfferAndBoxesSayIsInTheListToo) {
  FrmMain& form = open(kKitchens, kKitchenEvents);
  ASSERT_TRUE(house.select_event("Big Kitchen Lamp"));
  house.press(form.ListView1, kControlD, 3s);
  EXPECT_THAT(told(), ElementsAre("Deleted: Mondays at 07:30, Big Kitchen Lamp A3 on at 40\xA0%"));
  EXPECT_EQ(message().id, 0u) << "said twice";
  undo(3s);
  EXPECT_THAT(events(), HasSubstr("Big Kitchen Lamp"));
  EXPECT_FALSE(form.messages.get().front().undoable);
  select("Hall");
  house.press(form.Tree, 'a', 1s);
  EXPECT_EQ(told().front(), "If you wish to delete the item, press the Back Space key");
  EXPECT_EQ(form.unread.get(), 0);
}

// Catches: an undoing that fails half-way and leaves the house in between, or takes its offer
// along.
TEST(MessageFailure, WhatCannotBePutBackIsSaidAndOfferedAgain) {
  for (const char* kept : {"macs.hlk", "evelst.hwd", "rmlst.hwd", "tclines.tmp"}) {
    EventHouse house;
    StubbornFiles disk;
    const std::map<std::filesystem::path, std::string> before = {
        {House::file("rmlst.hwd"), kKitchens},
        {House::file("evelst.hwd"), kKitchenEvents},
        {House::file("macs.hlk"), kMacros}};
    disk.contents = before;
    house.used_files = &disk;
    house.settings.write("type", "KitchenLamp", "bulb");
    FrmMain& form = house.open_connected();
    form.Tree.selected = form.Tree.find("Lamp~A~1");
    house.press(form.Tree, kControlD, 40s);
    const auto without = disk.contents;
    ASSERT_NE(without, before);
    disk.kept = kept;
    form.undo_latest_asked();
    house.loop.advance(20s);
    EXPECT_THAT(form.messages.get().front().text,
                HasSubstr("is not back: the files of the house could not be"));
    EXPECT_EQ(disk.contents, without) << kept;
    EXPECT_EQ(house.settings.read("type", "KitchenLamp", "(none)"), "(none)");
    disk.kept = "";
    form.undo_latest_asked();
    house.loop.advance(20s);
    EXPECT_EQ(disk.contents, before) << kept;
  }
}

}  // namespace
}  // namespace homewarden::testing
