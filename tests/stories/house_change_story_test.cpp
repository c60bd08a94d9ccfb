// Rooms and devices get other names, rooms and addresses, and everything that names them follows.

#include "tests/stories/edit_house.h"

namespace homewarden::testing {
namespace {

class HouseChangeStory : public HouseEditStory {
 protected:
  HouseChangeStory() {
    house.content("Holiday.txt") = "kitchen lamp~A~1~ ~09:00~off~once~m\r\n";
    house.content("notes.txt") = "Kitchen Lamp has a new bulb\r\n";
    house.content("macs.hlk") =
        "When~A1~Kitchen~Lamp~turns~on~Turn~On~A2~Kitchen~Lamp2\r\n"
        "When~A3~Big~Kitchen~Lamp~turns~off~Turn~Off~A1~kitchen~Lamp\r\n"
        "When~A9~Kitchen~Lamp~turns~on~Turn~On~B2~Hall~Lamp\r\n";
    house.settings.write("type", "KitchenLamp", "bulb");
  }
  FrmMain& open_kitchen() {
    FrmMain& form = open(kKitchens, kKitchenEvents);
    house.click_node("Kitchen");
    return form;
  }
  // The form for the device of a slot.
  ChangePanel& edit(int slot) {
    house.form().card_order(slot, CardOrder::kChange);
    return house.form().change;
  }
  std::string save(House::Time length = 3s) {
    ChangePanel& change = house.form().change;
    house.click(change.cmd_change, length);
    return change.lab_changewrong.visible ? change.lab_changewrong.caption.get() : "";
  }
};

TEST_F(HouseChangeStory, EverythingThatNamesADeviceFollowsAndNothingElse) {
  FrmMain& form = open_kitchen();
  house.set_machine("KitchenLamp", "True");
  house.set_machine("dimKitchenLamp", "40");
  form.once_removal[3] = "Kitchen Lamp~A~1~40~07:30~on~once";
  house.content("Standard (off).txt") = "Kitchen Lamp~A~1~ ~10:00~off~daily~m\r\n";
  ChangePanel& change = edit(0);
  change.txt_changename.text = " Table Lamp ";
  change.lst_changeroom.text = "Hall";
  change.lst_changecode.text = "c";
  change.lst_changenumber.text = "7";
  EXPECT_EQ(save(), "");
  EXPECT_FALSE(change.frm_change.visible);
  EXPECT_EQ(rooms(),
            "Kitchen~~~\r\nHall~Table Lamp~C~7\r\nKitchen~Lamp2~A~2\r\nBig Kitchen~Lamp~A~3\r\n"
            "Hallway~Lamp~B~1\r\nHall~Lamp~B~2\r\nTown Hall~Lamp~B~3\r\n");
  EXPECT_EQ(events(),
            "Hall Table Lamp~C~7~40~07:30~on~daily~m\r\n"
            "Big Kitchen Lamp~A~3~40~07:30~on~daily~m\r\n"
            "Kitchen Lamp2~A~2~40~07:30~on~daily~m\r\nHall Table Lamp~C~7~ ~08:30~off~daily~m\r\n");
  EXPECT_EQ(house.content("Holiday.txt"), "Hall Table Lamp~C~7~ ~09:00~off~once~m\r\n");
  EXPECT_EQ(house.content("Standard (off).txt"), "Hall Table Lamp~C~7~ ~10:00~off~daily~m\r\n");
  EXPECT_EQ(house.content("notes.txt"), "Kitchen Lamp has a new bulb\r\n");
  EXPECT_EQ(macros(),
            "When~C7~Hall~Table~Lamp~turns~on~Turn~On~A2~Kitchen~Lamp2\r\n"
            "When~A3~Big~Kitchen~Lamp~turns~off~Turn~Off~C7~Hall~Table~Lamp\r\n"
            "When~A9~Kitchen~Lamp~turns~on~Turn~On~B2~Hall~Lamp\r\n");
  EXPECT_EQ(form.once_removal[3], "Hall Table Lamp~C~7~40~07:30~on~once") << "it runs once more";
  EXPECT_EQ(house.settings.read("type", "HallTableLamp", ""), "bulb");
  EXPECT_EQ(house.settings.read("type", "KitchenLamp", "(none)"), "(none)");
  EXPECT_EQ(house.machine("HallTableLamp") + house.machine("dimHallTableLamp"), "True40");
  EXPECT_EQ(house.machine("KitchenLamp") + house.machine("dimKitchenLamp"), "(none)(none)");
  EXPECT_EQ(form.devicename[0].caption.get(), "Lamp2") << "one stays in the room";
  EXPECT_EQ(house.status(), "Kitchen, Lamp is now Hall, Table Lamp");
  EXPECT_THAT(form.ListView1.rows.get(), SizeIs(4));
  EXPECT_FALSE(form.filebusy);
}

// The finder leads to a room while an event is edited.
TEST_F(HouseChangeStory, AnEventInTheEditorFollowsItsDevice) {
  FrmMain& form = open_kitchen();
  house.click_node("Events");
  form.ListView1.selected = 1;
  form.ListView1.double_click();
  ASSERT_EQ(form.lst_eventdevice.text.get(), "Kitchen Lamp A1");
  form.lst_dim.text = "50%";
  house.click_node("Kitchen");
  edit(0).txt_changename.text = "Table Lamp";
  form.change.lst_changenumber.text = "7";
  EXPECT_EQ(save(), "");
  house.click_node("Events");
  EXPECT_EQ(form.lst_eventdevice.text.get(), "Kitchen Table Lamp A7");
  const auto marked = static_cast<std::size_t>(form.ListView1.selected.get());
  ASSERT_LT(marked, form.ListView1.rows.get().size())
      << "no row is marked as the one in the editor";
  EXPECT_EQ(form.ListView1.rows.get()[marked][0], "Kitchen Table Lamp");
  house.click(form.Command6, 5s);
  EXPECT_THAT(events(), EndsWith("Kitchen Table Lamp~A~7~50~07:30~on~daily~m\r\n"));
  EXPECT_THAT(form.ListView1.rows.get(), SizeIs(4)) << "the event stands there twice";
}

TEST_F(HouseChangeStory, ARenamedRoomKeepsItsPageItsTypesAndItsEvents) {
  FrmMain& form = open_kitchen();
  form.mnu_renameroom.click();
  form.change.txt_changename.text = "Galley";
  EXPECT_EQ(save(), "");
  EXPECT_EQ(form.lab_room.caption.get(), "Galley");
  EXPECT_EQ(form.Tree.selected.get(), form.Tree.find("Galley"));
  EXPECT_THAT(rooms(), StartsWith("Galley~~~\r\nGalley~Lamp~A~1\r\nGalley~Lamp2~A~2\r\nBig "));
  EXPECT_THAT(events(), StartsWith("Galley Lamp~A~1~"));
  EXPECT_THAT(house.content("Holiday.txt"), StartsWith("Galley Lamp~A~1~"));
  EXPECT_EQ(house.settings.read("type", "GalleyLamp", ""), "bulb");
}

TEST_F(HouseChangeStory, WhatCannotBeIsSaidAndChangesNothing) {
  FrmMain& form = open_kitchen();
  const std::string before = rooms();
  ChangePanel& change = edit(0);
  const auto says = [&](const char* name, const char* room, const char* code, const char* unit) {
    change.txt_changename.text = name;
    change.lst_changeroom.text = room;
    change.lst_changecode.text = code;
    change.lst_changenumber.text = unit;
    return save();
  };
  EXPECT_EQ(says(" ", "Kitchen", "A", "1"), "You must type in a name for this device");
  EXPECT_THAT(says("a~b", "Kitchen", "A", "1"), HasSubstr("tilde"));
  EXPECT_THAT(says("Lamp", "Kitchen", "Q", "1"), HasSubstr("letter from A to P"));
  EXPECT_THAT(says("Lamp", "Kitchen", "A", "17"), HasSubstr("number from 1 to 16"));
  EXPECT_THAT(says("Lamp", "Cellar", "A", "1"), HasSubstr("There is no room"));
  EXPECT_THAT(says("lamp2", "Kitchen", "A", "1"), HasSubstr("There is a device"));
  EXPECT_THAT(says("Lamp", "Hall", "A", "1"), HasSubstr("There is a device"));
  EXPECT_THAT(says("way Lamp", "Hall", "A", "1"), HasSubstr("could not be told from"));
  form.moved_to(0, "Hall");
  house.loop.advance(1s);
  EXPECT_TRUE(change.frm_change.visible && change.lab_changewrong.visible);
  form.mnu_renameroom.click();
  for (const char* taken : {"hallway", "Events"}) {
    change.txt_changename.text = taken;
    EXPECT_THAT(save(), HasSubstr("already"));
  }
  house.files.unreadable.insert(House::file("Holiday.txt"));
  edit(0).txt_changename.text = "Uplighter";
  EXPECT_THAT(save(), HasSubstr("nothing was changed"));
  EXPECT_EQ(rooms() + events(), before + kKitchenEvents);
  EXPECT_EQ(house.settings.read("type", "KitchenLamp", ""), "bulb");
  EXPECT_EQ(house.settings.read("type", "KitchenUplighter", "(none)"), "(none)");
  house.files.unreadable.clear();
  EXPECT_FALSE(change.lab_changehint.visible);
  change.lst_changecode.text = "B";
  EXPECT_EQ(change.lab_changehint.caption.get(),
            "Lamp in Hallway has this address too: both are switched together.");
  EXPECT_EQ(save(), "") << "an address may be shared";
}

TEST_F(HouseChangeStory, PressesAndACommandOnItsWayFollowTheDevice) {
  FrmMain& form = open_kitchen();
  house.interface_control.mains_time = 5s;
  form.device[0].click();
  house.loop.advance(1s);
  form.device[0].click();
  edit(0).txt_changename.text = "Uplighter";
  EXPECT_EQ(save(1s), "");
  house.loop.advance(5s);
  EXPECT_EQ(house.machine("KitchenUplighter"), "True") << "recorded of a lamp that is no more";
  EXPECT_EQ(house.machine("KitchenLamp"), "(none)");
  house.loop.advance(10s);
  EXPECT_THAT(house.line(), Contains(HasSubstr("A1 3"))) << "the press that waited is lost";
  EXPECT_EQ(house.machine("KitchenUplighter"), "False");
}

// A decision that cannot be carried out is taken back in the lists that were changed already.
TEST(HouseChangeFailure, AListThatCannotBeWrittenLeavesAllAsTheyWere) {
  for (const char* kept : {"macs.hlk", "Holiday.txt", "evelst.hwd", "rmlst.hwd", "tclines.tmp"}) {
    EventHouse house;
    StubbornFiles disk;
    const std::map<std::filesystem::path, std::string> before = {
        {House::file("rmlst.hwd"), kKitchens},
        {House::file("evelst.hwd"), kKitchenEvents},
        {House::file("Holiday.txt"), kKitchenEvents},
        {House::file("macs.hlk"), "When~A1~Kitchen~Lamp~turns~on~Turn~On~B1~Hallway~Lamp\r\n"}};
    disk.contents = before;
    house.used_files = &disk;
    FrmMain& form = house.open_connected();
    house.click_node("Kitchen");
    disk.kept = kept;
    form.card_order(0, CardOrder::kRename);
    form.change.txt_changename.text = "Uplighter";
    house.click(form.change.cmd_change, 3s);
    EXPECT_TRUE(form.change.lab_changewrong.visible) << kept;
    disk.kept = "";
    disk.unreadable = {House::file("Holiday.txt")};
    house.click(form.change.cmd_change, 3s);
    EXPECT_THAT(form.change.lab_changewrong.caption.get(), HasSubstr("Holiday.txt cannot be read"));
    disk.unreadable = {};
    house.forget_program();
    house.open(5s);
    EXPECT_EQ(disk.contents, before) << kept;
  }
}

}  // namespace
}  // namespace homewarden::testing
