// A house is built from an empty window.

#include "tests/stories/edit_house.h"

namespace homewarden::testing {
namespace {

TEST_F(HouseEditStory, AHouseIsBuiltFromAnEmptyWindow) {
  FrmMain& form = open("");
  EXPECT_TRUE(form.lab_norooms.visible && !form.lab_notice.visible);
  add_device("", "Lamp", "A", "1", "");
  EXPECT_THAT(dialogs.messages, ElementsAre("Error!: Please add a room first."));
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
  house.click(form.device[1], 3s);
  EXPECT_THAT(house.line(), SizeIs(1));
}

TEST_F(HouseEditStory, WhatIsNoNameRoomOrAddressIsRefusedAndNothingIsWritten) {
  FrmMain& form = open(kKitchens);
  int focused = 0;
  form.txt_roomname.focus_requested.connect([&focused] { ++focused; });
  add_room("");
  EXPECT_EQ(dialogs.messages.back(), "Error!: You must type in a name for room");
  EXPECT_EQ(focused, 2) << "opened, and again after the message";
  EXPECT_TRUE(form.frm_addroom.visible);
  for (const char* name :
       {"  ", "A~B", "Tab\there", "Home", "events", "\"Den\"", "M\x1Alaga", "hALL", " Hall "})
    add_room(name);
  EXPECT_THAT(dialogs.messages,
              IsSupersetOf({HasSubstr("double quote"), HasSubstr("\"M\x1Alaga\" holds a letter"),
                            HasSubstr("There is a room \"Hall\" already")}));
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
                        {"Kitchen", "Fan", "A", "1x", "is no device number"},
                        {"Kitchen", "LAMP", "C", "1", "\"Lamp\" in the room \"Kitchen\" already"},
                        {"Kitchen", "Lamp 2", "C", "1",
                         "could not be told from \"Lamp2\" in the room \"Kitchen\""}}) {
    add_device(c.room, c.name, c.house, c.unit, "Fan (appliance module)");
    EXPECT_THAT(dialogs.messages.back(), HasSubstr(c.reason));
  }
  EXPECT_THAT(dialogs.messages, SizeIs(22));
  EXPECT_EQ(rooms(), kKitchens);
  EXPECT_EQ(house.settings.read("type", "KitchenFan", "(none)"), "(none)");
}

// Every setting of the machine lies under one name.
TEST_F(HouseEditStory, ADeviceSharesItsStateWithNothingElse) {
  open("Bed~~~\r\nBedroom~Lamp~A~2\r\npo~~~\r\nDim~~~\r\nDim~Fan~A~4\r\nFa~~~\r\n");
  const std::string before = rooms();
  add_device("Bed", "room Lamp", "A", "1", "");
  EXPECT_THAT(dialogs.messages.back(), HasSubstr("\"Lamp\" in the room \"Bedroom\""));
  add_device("Dim", "Bedroom Lamp", "A", "1", "");
  EXPECT_THAT(dialogs.messages.back(), HasSubstr("\"Lamp\" in the room \"Bedroom\""))
      << "its state is the level of the other";
  add_device("Fa", "n", "A", "1", "");
  EXPECT_THAT(dialogs.messages.back(), HasSubstr("\"Fan\" in the room \"Dim\""));
  add_device("po", "rt", "A", "1", "");
  EXPECT_THAT(dialogs.messages.back(), HasSubstr("keeps something else under \"port\""));
  EXPECT_EQ(rooms(), before);
}

TEST_F(HouseEditStory, AnAddressIsSharedOnlyWhenThePersonSaysSo) {
  open(kKitchens);
  dialogs.refused = {"Same address"};
  add_device("Hall", "Fan", "a", "1", "");
  EXPECT_THAT(dialogs.messages,
              ElementsAre("Same address: \"Lamp\" in the room \"Kitchen\" has this address (A1) "
                          "already. Do you want to add \"Fan\" all the same?"));
  EXPECT_THAT(dialogs.preselected, ElementsAre(Answer::kNo));
  EXPECT_EQ(rooms(), kKitchens);
}

TEST_F(HouseEditStory, WhatIsSavedWhileTheFilesAreInUseIsTakenInItsOrderAsItWas) {
  FrmMain& form = open("Hall~~~\r\n");
  form.filebusy = true;
  add_device("Hall", "Lamp", "A", "1", "Light Module (dimmable)");
  add_room("Attic");
  form.Command3.click();
  add_device("Hall", "Fan", "A", "2", "Fan (appliance module)");
  add_device("Hall", "Bell", "A", "2", "Radio (appliance module)");
  add_room("attic");
  form.txt_devname.text = "Radio";
  form.lst_devicetype.text = "Radio (appliance module)";
  house.click_node("Hall");
  form.filebusy = false;
  house.loop.advance(20s);
  EXPECT_EQ(rooms(), "Hall~~~\r\nHall~Lamp~A~1\r\nAttic~~~\r\nHall~Fan~A~2\r\nHall~Bell~A~2\r\n");
  EXPECT_EQ(house.settings.read("type", "HallLamp", ""), "bulb");
  EXPECT_EQ(house.settings.read("type", "HallFan", ""), "fan");
  EXPECT_EQ(house.settings.read("type", "HallBell", ""), "radio");
  EXPECT_THAT(dialogs.messages,
              ElementsAre(HasSubstr("\"Fan\" in the room \"Hall\" has this address"),
                          HasSubstr("There is a room \"Attic\" already")))
      << "what another Save added meanwhile was not looked at";
  EXPECT_EQ(form.txt_devname.text.get(), "Radio") << "the next name is gone";
  EXPECT_TRUE(form.frm_devices.visible) << "thrown out of another panel";
  EXPECT_EQ(form.Tree.selected.get(), form.Tree.find("Hall"));
}

// The node of the second one has a key of its own, and the keys change places.
TEST_F(HouseEditStory, TheDeviceSelectedStaysSoWhenOneOfItsNameAndAddressComesBeforeIt) {
  FrmMain& form = open("Pantry~Lamp~A~1\r\nKitchen~~~\r\n");
  form.lst_temproom.text = "Kitchen";
  form.txt_devname.text = "Lamp";
  form.Command4.click();
  select("Lamp~A~1");
  house.loop.advance(5s);
  ASSERT_TRUE(form.Tree.selected.get() && form.Tree.find("Pantry~Lamp~A~1"));
  EXPECT_EQ(form.Tree.selected.get()->parent->text, form.lab_room.caption.get());
}

}  // namespace
}  // namespace homewarden::testing
