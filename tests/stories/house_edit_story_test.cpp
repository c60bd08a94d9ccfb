// A house is built from an empty window, changed and taken apart.

#include <gmock/gmock.h>

#include "tests/stories/event_house.h"

namespace homewarden::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const char* const kKitchens =
    "Kitchen~~~\r\nKitchen~Lamp~A~1\r\nKitchen~Lamp2~A~2\r\nBig Kitchen~Lamp~A~3\r\n"
    "Hallway~Lamp~B~1\r\nHall~Lamp~B~2\r\nTown Hall~Lamp~B~3\r\n";
const char* const kKitchenEvents =
    "Kitchen Lamp~A~1~40~07:30~on~daily~m\r\nBig Kitchen Lamp~A~3~40~07:30~on~daily~m\r\n"
    "Kitchen Lamp2~A~2~40~07:30~on~daily~m\r\nkitchen lamp~A~1~ ~08:30~off~daily~m\r\n";

class HouseEditStory : public ::testing::Test {
 protected:
  FrmMain& open(const std::string& rooms, const std::string& events = {}) {
    house.files.contents.erase(House::file("rmlst.hwd"));
    if (!rooms.empty()) house.files.contents[House::file("rmlst.hwd")] = rooms;
    if (!events.empty()) house.files.contents[House::file("evelst.hwd")] = events;
    house.loop.set_wall_clock(2023, 6, 21, 20, 0, 0);
    FrmMain& form = house.open_connected();
    house.dialogs.messages.clear();
    house.status_texts.clear();
    return form;
  }
  void add_room(const std::string& name) {
    house.form().Label3.click();
    house.form().txt_roomname.text = name;
    house.form().Command3.click();
    house.loop.advance(1s);
  }
  void add_device(const std::string& room, const std::string& name, const std::string& house_code,
                  const std::string& unit, const std::string& type) {
    FrmMain& form = house.form();
    form.Label4.click();
    form.lst_temproom.text = room;
    form.txt_devname.text = name;
    form.lst_housecode.text = house_code;
    form.lst_device.text = unit;
    form.lst_devicetype.text = type;
    form.Command4.click();
    house.loop.advance(1s);
  }
  void select(const std::string& key) {
    house.form().Tree.selected = house.form().Tree.find(key);
    ASSERT_TRUE(house.form().Tree.selected.get()) << key;
  }
  std::string rooms() { return house.files.contents[House::file("rmlst.hwd")]; }
  std::string events() { return house.files.contents[House::file("evelst.hwd")]; }

  EventHouse house;
};

TEST_F(HouseEditStory, AHouseIsBuiltFromAnEmptyWindow) {
  FrmMain& form = open("");
  EXPECT_TRUE(form.lab_norooms.visible);
  add_device("", "Lamp", "A", "1", "");
  EXPECT_THAT(house.dialogs.messages, ElementsAre("Error!: Please add a room first."));
  add_room("Kitchen");
  EXPECT_FALSE(form.lab_norooms.visible);
  EXPECT_TRUE(form.frm_home.visible);
  EXPECT_EQ(form.txt_roomname.text.get(), "");
  house.click_node("Kitchen");
  EXPECT_TRUE(form.lab_nodevices.visible);
  add_device("Kitchen", "Table Lamp", "a", "3", "Light Module (dimmable)");
  add_device("Kitchen", "Fan", "B", "16", "no such type");
  EXPECT_EQ(rooms(), "Kitchen~~~\r\nKitchen~Table Lamp~A~3\r\nKitchen~Fan~B~16\r\n");
  EXPECT_EQ(house.settings.read("type", "KitchenTableLamp", ""), "bulb");
  EXPECT_EQ(house.settings.read("type", "KitchenFan", ""), "switch");
  EXPECT_THAT(form.lst_eventdevice.items.get(),
              ElementsAre("Kitchen Fan B16", "Kitchen Table Lamp A3"));
  house.click_node("Kitchen");
  form.device[1].click();
  house.loop.advance(3s);
  EXPECT_THAT(house.interface_control.take_line_log(), SizeIs(1));
}

TEST_F(HouseEditStory, WhatIsNoNameRoomOrAddressIsRefusedAndNothingIsWritten) {
  FrmMain& form = open(kKitchens);
  int focused = 0;
  form.txt_roomname.focus_requested.connect([&focused] { ++focused; });
  add_room("");
  EXPECT_EQ(house.dialogs.messages.back(), "Error!: You must type in a name for room");
  EXPECT_EQ(focused, 2) << "opened, and again after the message";
  EXPECT_TRUE(form.frm_addroom.visible);
  for (const char* name : {"  ", "A~B", "Tab\there", "Home"}) add_room(name);
  struct Case {
    const char* room;
    const char* name;
    const char* house;
    const char* unit;
    const char* reason;
  };
  for (const Case& c : {Case{"Kitchen", "", "A", "1", "You must type in a name for this device"},
                        {"Kitchen", "A~B", "A", "1", "tilde"},
                        {"", "Fan", "A", "1", "choose the room"},
                        {"Cellar", "Fan", "A", "1", "There is no room \"Cellar\""},
                        {"Kitchen", "Fan", "Q", "1", "\"Q\" is no house code"},
                        {"Kitchen", "Fan", "", "1", "is no house code"},
                        {"Kitchen", "Fan", "AB", "1", "\"AB\" is no house code"},
                        {"Kitchen", "Fan", "A", "0", "\"0\" is no device number"},
                        {"Kitchen", "Fan", "A", "17", "is no device number"},
                        {"Kitchen", "Fan", "A", "1x", "is no device number"}}) {
    add_device(c.room, c.name, c.house, c.unit, "Fan (appliance module)");
    EXPECT_THAT(house.dialogs.messages.back(), HasSubstr(c.reason));
  }
  EXPECT_THAT(house.dialogs.messages, SizeIs(15));
  EXPECT_EQ(rooms(), kKitchens);
  EXPECT_EQ(house.settings.read("type", "KitchenFan", "(none)"), "(none)");
}

TEST_F(HouseEditStory, DeletingADeviceTakesItsEventsAndNothingElse) {
  FrmMain& form = open(kKitchens, kKitchenEvents);
  house.settings.write("type", "KitchenLamp", "bulb");
  house.settings.write("type", "KitchenLamp2", "bulb");
  house.set_machine("KitchenLamp", "True");
  house.set_machine("dimKitchenLamp", "40");
  house.set_machine("KitchenLamp2", "True");
  select("Lamp~A~1");
  form.mnu_deletetree.click();
  house.loop.advance(40s);
  EXPECT_THAT(house.dialogs.messages,
              ElementsAre("Really Delete?: Are you sure you want to delete this device?",
                          "Remove Events?: Do you want to remove any events you may have set for "
                          "this device?"));
  EXPECT_THAT(house.status_texts,
              ElementsAre("PLEASE WAIT! Searching for Kitchen, Lamp for deletion",
                          "FOUND! Kitchen, Lamp. Deleting now.",
                          "Found an event for Kitchen, Lamp. Deleting now.",
                          "Device Removed, cleaning up now.", "Nearly finished.",
                          "Clearing old data ready for re load", "Your item was deleted at 20:00"));
  EXPECT_EQ(rooms(),
            "Kitchen~~~\r\nKitchen~Lamp2~A~2\r\nBig Kitchen~Lamp~A~3\r\nHallway~Lamp~B~1\r\n"
            "Hall~Lamp~B~2\r\nTown Hall~Lamp~B~3\r\n");
  EXPECT_EQ(events(),
            "Big Kitchen Lamp~A~3~40~07:30~on~daily~m\r\nKitchen "
            "Lamp2~A~2~40~07:30~on~daily~m\r\n");
  EXPECT_EQ(house.settings.read("type", "KitchenLamp", "(none)"), "(none)");
  EXPECT_EQ(house.machine("KitchenLamp") + house.machine("dimKitchenLamp"), "(none)(none)");
  EXPECT_EQ(house.machine("KitchenLamp2"), "True");
  EXPECT_THAT(form.ListView1.rows.get(), SizeIs(2));
  EXPECT_FALSE(form.Tree.find("Lamp~A~1"));
  EXPECT_TRUE(form.frm_home.visible && form.enabled && !form.filebusy);
  for (const char* scratch : {"tc.tmp", "tcev.tmp", "tcdone.tmp"})
    EXPECT_FALSE(house.files.contents.contains(House::file(scratch))) << scratch;
}

TEST_F(HouseEditStory, DeletingARoomTakesItsDevicesAndKeepsTheirEvents) {
  FrmMain& form = open(kKitchens, kKitchenEvents);
  house.settings.write("type", "HallLamp", "bulb");
  select("Hall");
  form.Tree.key_press(127);
  bool enabled_early = false;
  form.enabled.changed.connect([&] { enabled_early |= form.enabled && !form.frm_home.visible; });
  house.click_node("Hallway");
  house.loop.advance(1500ms);
  EXPECT_FALSE(form.enabled);
  house.loop.advance(40s);
  EXPECT_THAT(house.dialogs.messages, ElementsAre(HasSubstr("Really Delete?: Are you sure")));
  EXPECT_THAT(house.status_texts,
              ElementsAre("PLEASE WAIT! Searching for Hall, for deletion",
                          "FOUND Hall, deleting now", "Hall has been deleted, please wait.",
                          "Clearing old data ready for re load", "Your item was deleted at 20:00"));
  EXPECT_THAT(rooms(), HasSubstr("Hallway~Lamp~B~1\r\nTown Hall~Lamp~B~3\r\n"));
  EXPECT_EQ(events(), kKitchenEvents);
  EXPECT_EQ(house.settings.read("type", "HallLamp", "(none)"), "(none)");
  EXPECT_TRUE(form.enabled);
  EXPECT_FALSE(enabled_early) << "the window took input while its tree was empty";
}

TEST_F(HouseEditStory, DevicesThatShareAKeyOrStandTwice) {
  open("Bed~room Lamp~A~1\r\nBedroom~Lamp~A~2\r\nAttic~Fan~C~1\r\nAttic~Fan~C~1\r\n",
       "Attic Fan~C~1~ ~07:30~off~daily~m\r\n");
  house.settings.write("type", "BedroomLamp", "bulb");
  select("Lamp~A~2");
  house.form().Tree.key_press(4);
  house.loop.advance(40s);
  EXPECT_EQ(house.settings.read("type", "BedroomLamp", ""), "bulb")
      << "the other device of this key lost its type";
  house.status_texts.clear();
  select("Fan~C~1");
  house.form().Tree.key_press(4);
  house.loop.advance(9500ms);
  house.interface_control.CommandReceived("C1", 2);
  house.loop.advance(500ms);
  EXPECT_EQ(house.machine("AtticFan"), "True") << "not known any more: this shows nothing";
  house.loop.advance(30s);
  EXPECT_EQ(house.machine("AtticFan"), "(none)") << "a wall switch left the state of no device";
  EXPECT_EQ(rooms(), "Bed~room Lamp~A~1\r\n");
  EXPECT_EQ(events(), "");
  EXPECT_THAT(house.status_texts, Contains("FOUND! Attic, Fan. Deleting now.").Times(2));
}

TEST_F(HouseEditStory, OtherKeysAndNoChangeNothing) {
  FrmMain& form = open(kKitchens, kKitchenEvents);
  select("Lamp~A~1");
  for (const int key : {97, 13, 32}) form.Tree.key_press(key);
  house.loop.advance(10s);
  EXPECT_THAT(house.dialogs.messages, IsEmpty());
  form.Tree.key_press(8);
  house.loop.advance(10s);
  EXPECT_EQ(house.dialogs.messages.back(),
            "What did you want to do?: If you wish to delete the item, press the Back Space key");
  EXPECT_TRUE(form.Tree.find("Lamp~A~1"));
  house.dialogs.says_yes = false;
  form.Tree.key_press(4);
  select("Kitchen");
  form.Tree.key_press(4);
  house.loop.advance(30s);
  EXPECT_TRUE(form.enabled);
  select("Home");
  form.Tree.key_press(4);
  EXPECT_TRUE(form.frm_home.visible);
  select("Events");
  form.Tree.key_press(4);
  EXPECT_TRUE(form.frm_event.visible);
  EXPECT_EQ(form.lst_hour.text.get(), "20");
  house.dialogs.says_yes = true;
  select("Macros");
  form.Tree.key_press(4);
  house.loop.advance(30s);
  EXPECT_EQ(rooms(), kKitchens);
  EXPECT_EQ(events(), kKitchenEvents);
  EXPECT_TRUE(form.Tree.find("Macros"));
}

TEST_F(HouseEditStory, ADeletionAndAPassWaitForEachOtherAndBothEnd) {
  FrmMain& form =
      open(kKitchens, "Hall Lamp~B~2~ ~20:01~off~daily~mtwufsr\r\n" + std::string(kKitchenEvents));
  house.interface_control.mains_time = 10s;
  house.run_until(20, 0, 58);
  select("Lamp~A~1");
  form.Tree.key_press(4);  // holds the files when the minute begins
  house.run_until(20, 1, 0);
  EXPECT_TRUE(form.filebusy);
  EXPECT_THAT(house.interface_control.take_line_log(), IsEmpty());
  house.run_until(20, 1, 40);
  EXPECT_THAT(house.interface_control.take_line_log(), SizeIs(1)) << "the event was lost";
  EXPECT_FALSE(form.Tree.find("Lamp~A~1"));
  EXPECT_FALSE(form.filebusy);

  // the other way round: a pass holds them when a deletion begins
  house.files.contents[House::file("evelst.hwd")] = "Hall Lamp~B~2~ ~20:02~off~daily~mtwufsr\r\n";
  house.run_until(20, 2, 1);
  ASSERT_TRUE(form.filebusy);
  select("Lamp2~A~2");
  form.Tree.key_press(4);
  house.run_until(20, 3, 0);
  EXPECT_FALSE(form.Tree.find("Lamp2~A~2"));
  EXPECT_THAT(form.Tree.find("Hall"), ::testing::NotNull());
}

TEST_F(HouseEditStory, TwoDeletionsAtOnceLeaveACompleteTree) {
  FrmMain& form = open(kKitchens);
  select("Lamp~A~1");
  form.Tree.key_press(4);
  house.loop.advance(2s);
  select("Lamp2~A~2");
  form.Tree.key_press(4);
  house.loop.advance(40s);
  EXPECT_THAT(
      form.lst_eventdevice.items.get(),
      ElementsAre("Big Kitchen Lamp A3", "Hall Lamp B2", "Hallway Lamp B1", "Town Hall Lamp B3"));
  EXPECT_THAT(form.lst_rooms.items.get(), SizeIs(5));
}

TEST_F(HouseEditStory, ADiskThatRefusesIsToldAndNothingIsLost) {
  FrmMain& form = open(kKitchens, kKitchenEvents);
  house.files.stop_at(1);
  add_room("Cellar");
  EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("nothing was added"));
  select("Lamp~A~1");
  form.Tree.key_press(4);
  house.loop.advance(40s);
  EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("your item is still there"));
  EXPECT_EQ(house.status(), "Your item could not be deleted");
  EXPECT_EQ(rooms(), kKitchens);
  EXPECT_EQ(events(), kKitchenEvents);
  EXPECT_TRUE(form.enabled && !form.filebusy);
}

// A decision that could not be carried out must not come true at a later start.
TEST(HouseEditFailure, ADeletionThatFailsHasNotHappened) {
  struct StubbornFiles : MemoryFiles {
    std::string kept;
    bool rename(const path& from, const path& to) override {
      return to.filename() != kept && MemoryFiles::rename(from, to);
    }
  };
  for (const char* kept : {"evelst.hwd", "rmlst.hwd"}) {
    EventHouse house;
    StubbornFiles disk;
    disk.contents = {{House::file("rmlst.hwd"), kKitchens},
                     {House::file("evelst.hwd"), kKitchenEvents}};
    house.used_files = &disk;
    house.settings.write("type", "KitchenLamp", "bulb");
    FrmMain& form = house.open_connected();
    disk.kept = kept;
    form.Tree.selected = form.Tree.find("Lamp~A~1");
    form.Tree.key_press(4);
    house.loop.advance(40s);
    EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("your item is still there"));
    disk.kept = "";
    form.txt_roomname.text = "Attic";
    form.Command3.click();
    house.loop.advance(5s);
    house.forget_program();
    house.open();
    house.loop.advance(5s);
    const std::string rooms = disk.contents[House::file("rmlst.hwd")];
    EXPECT_THAT(rooms, HasSubstr("Attic~~~")) << "what was added since is lost";
    EXPECT_THAT(rooms, HasSubstr("Kitchen~Lamp~A~1"));
    EXPECT_EQ(house.settings.read("type", "KitchenLamp", ""), "bulb");
    EXPECT_FALSE(disk.contents.contains(House::file("tcdone.tmp")));
  }
}

TEST_F(HouseEditStory, WaitingForTheFilesDoublesNothingAndKeepsWhatIsTyped) {
  FrmMain& form = open(kKitchens);
  form.filebusy = true;
  add_room("Attic");
  form.Command3.click();
  form.txt_roomname.text = "Cellar";
  house.interface_control.CommandReceived("B02", 2);
  house.loop.advance(3s);
  form.filebusy = false;
  house.loop.advance(5s);
  EXPECT_EQ(rooms(), std::string(kKitchens) + "Attic~~~\r\n");
  EXPECT_EQ(form.txt_roomname.text.get(), "Cellar");
  EXPECT_EQ(house.machine("HallLamp"), "True");
}

}  // namespace
}  // namespace homewarden::testing
