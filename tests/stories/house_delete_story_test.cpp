// Rooms and devices go, and nothing else.

#include "tests/stories/edit_house.h"

namespace homewarden::testing {
namespace {

using HouseDeleteStory = HouseEditStory;

TEST_F(HouseDeleteStory, DeletingADeviceTakesItsEventsAndNothingElse) {
  FrmMain& form = open(kKitchens, kKitchenEvents);
  house.settings.write("type", "KitchenLamp", "bulb");
  house.settings.write("type", "KitchenLamp2", "bulb");
  house.set_machine("KitchenLamp", "True");
  house.set_machine("dimKitchenLamp", "40");
  house.set_machine("KitchenLamp2", "True");
  select("Lamp~A~1");
  house.click(form.mnu_deletetree, 40s);
  EXPECT_THAT(
      dialogs.messages,
      ElementsAre(
          "Really Delete?: Are you sure you want to delete this device?\r\n\r\nKitchen, Lamp (A1)",
          "Remove Events?: Do you want to remove any events you may have set for "
          "this device?\r\n\r\nKitchen, Lamp (A1)"));
  EXPECT_THAT(dialogs.preselected, ElementsAre(Answer::kNo));
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
}

TEST_F(HouseDeleteStory, DeletingARoomTakesItsDevicesAndKeepsTheirEvents) {
  const std::string all_events =
      std::string(kKitchenEvents) + "hall lamp~B~2~ ~08:30~off~daily~m\r\n";
  FrmMain& form = open(kKitchens, all_events);
  house.settings.write("type", "HallLamp", "bulb");
  dialogs.refused = {"Remove Events?"};
  select("Hall");
  form.Tree.key_press(127);
  bool enabled_early = false;
  form.enabled.changed.connect([&] { enabled_early |= form.enabled && !form.frm_home.visible; });
  house.click_node("Hallway", 1500ms);
  EXPECT_FALSE(form.enabled);
  house.loop.advance(40s);
  EXPECT_THAT(dialogs.messages,
              ElementsAre(HasSubstr("Really Delete?: Are you sure"), HasSubstr("Remove Events?")));
  EXPECT_THAT(house.status_texts,
              ElementsAre("PLEASE WAIT! Searching for Hall, for deletion",
                          "FOUND Hall, deleting now", "Hall has been deleted, please wait.",
                          "Clearing old data ready for re load", "Your item was deleted at 20:00"));
  EXPECT_THAT(rooms(), HasSubstr("Hallway~Lamp~B~1\r\nTown Hall~Lamp~B~3\r\n"));
  EXPECT_EQ(events(), all_events);
  EXPECT_EQ(house.settings.read("type", "HallLamp", "(none)"), "(none)");
  EXPECT_TRUE(form.enabled);
  EXPECT_FALSE(enabled_early) << "the window took input while its tree was empty";
}

TEST_F(HouseDeleteStory, DevicesThatShareAKeyOrStandTwice) {
  open("Bed~room Lamp~A~1\r\nBedroom~Lamp~A~2\r\nAttic~Fan~C~1\r\nAttic~Fan~C~1\r\n",
       "Attic Fan~C~1~ ~07:30~off~daily~m\r\n");
  house.settings.write("type", "BedroomLamp", "bulb");
  delete_item("Lamp~A~2");
  EXPECT_EQ(house.settings.read("type", "BedroomLamp", ""), "bulb")
      << "the other device of this key lost its type";
  house.status_texts.clear();
  delete_item("Fan~C~1", 9500ms);
  house.receive("C1", 2, 500ms);
  EXPECT_EQ(house.machine("AtticFan"), "True") << "not known any more: this shows nothing";
  house.loop.advance(30s);
  EXPECT_EQ(house.machine("AtticFan"), "(none)") << "a wall switch left the state of no device";
  EXPECT_EQ(rooms(), "Bed~room Lamp~A~1\r\n");
  EXPECT_EQ(events(), "");
  EXPECT_THAT(house.status_texts, Contains("FOUND! Attic, Fan. Deleting now.").Times(2));
}

TEST_F(HouseDeleteStory, NoChangesNothingAndTheHintIsTrue) {
  FrmMain& form = open(kKitchens, kKitchenEvents);
  select("Lamp~A~1");
  house.press(form.Tree, 'a', 10s);
  EXPECT_THAT(dialogs.messages, ElementsAre("What did you want to do?: If you wish to delete the "
                                            "item, press the Back Space key"));
  dialogs.refused = {"Really Delete?"};
  house.press(form.Tree, kControlD, 30s);
  delete_item("Kitchen", 30s);
  EXPECT_TRUE(form.enabled);
  EXPECT_EQ(rooms() + events(), std::string(kKitchens) + kKitchenEvents);
  EXPECT_THAT(house.status_texts, Not(Contains(HasSubstr("elet"))));
  dialogs.refused.clear();
  delete_item("Lamp~A~1");
  EXPECT_FALSE(form.Tree.find("Lamp~A~1"));
}

TEST_F(HouseDeleteStory, AFixedNodeShowsItsPanelAndOnlyARoomOfItsNameGoes) {
  FrmMain& form = open("Home~Bell~A~1\r\nMacros~~~\r\n", kKitchenEvents);
  for (const char* node : {"Web Server", "Profiles", "Home", "Events"}) delete_item(node);
  EXPECT_TRUE(form.frm_event.visible);
  EXPECT_EQ(form.lst_hour.text.get(), "20");
  EXPECT_THAT(dialogs.messages, IsEmpty());
  EXPECT_THAT(house.status_texts, Not(Contains(HasSubstr("elet"))));
  delete_item("Macros");
  EXPECT_EQ(rooms(), "Home~Bell~A~1\r\n");
  EXPECT_TRUE(form.Tree.find("Macros"));
  delete_item("Macros");
  EXPECT_TRUE(form.frm_macros.visible);
}

// Old lists hold what can no longer be added.
TEST_F(HouseDeleteStory, WhatIsMeantExactlyGoesAndWhatIsLikeItStays) {
  open("Hall~Lamp~A~1\r\nHall~Lamp~A~12\r\nhall~Fan~B~1\r\nHall~Bell~B~2\r\nPorch~Lamp~A~1\r\n",
       "Hall Lamp~A~12~40~07:30~on~daily~m\r\nHall Lamp~A~1~40~07:30~on~daily~m\r\n"
       "Hall Lamp~A~3~40~07:30~on~daily~m\r\n");
  house.settings.write("type", "HallLamp", "bulb");
  delete_item("Porch~Lamp~A~1");
  delete_item("Lamp~A~1");
  EXPECT_EQ(rooms(), "Hall~Lamp~A~12\r\nhall~Fan~B~1\r\nHall~Bell~B~2\r\n");
  EXPECT_EQ(events(), "Hall Lamp~A~12~40~07:30~on~daily~m\r\n");
  EXPECT_EQ(house.settings.read("type", "HallLamp", ""), "bulb");
  dialogs.messages.clear();
  delete_item("Hall");
  EXPECT_EQ(rooms(), "hall~Fan~B~1\r\n");
  EXPECT_THAT(dialogs.messages.front(), HasSubstr("\r\n\r\nHall, with 2 devices"));
}

TEST_F(HouseDeleteStory, TheMacrosOfADeviceGoWhenThePersonSaysSo) {
  const std::string of_others =
      "When~B12~Porch~Fan~Two~turns~on~Turn~On~C1~Hall~Bell\r\n"
      "When~B12~Old~Fan~turns~on~Turn~On~C1~Hall~Bell\r\n"
      "When~C1~Hall~Bell~turns~off~Turn~Off~B1~Porch~Fan\r\n";
  const std::string of_fan =
      "When~B12~Porch~Fan~turns~on~Turn~On~C1~Hall~Bell\r\n"
      "When~C1~Hall~Bell~turns~on~Turn~On~b12~porch~Fan\r\n";
  house.content("macs.hlk") = of_fan + of_others;
  const std::string list =
      "Hall~Bell~C~1\r\nPorch~Fan~B~12\r\nPorch~Fan Two~B~12\r\nPorch~Lamp~B~1\r\n";
  FrmMain& form = open(list);
  dialogs.refused = {"Remove Macros?"};
  delete_item("Fan~B~12");
  EXPECT_EQ(dialogs.messages.back(),
            "Remove Macros?: Do you want to remove the macros that use this device?\r\n\r\n"
            "Porch, Fan (B12)");
  EXPECT_EQ(macros(), of_fan + of_others);
  add_device("Porch", "Fan", "B", "12", "");
  dialogs.refused.clear();
  delete_item("Fan~B~12");
  EXPECT_EQ(macros(), of_others);
  EXPECT_THAT(form.ListVIew2.items.get(), SizeIs(3));
  dialogs.messages.clear();
  delete_item("Lamp~B~1");
  EXPECT_THAT(dialogs.messages, Not(Contains(HasSubstr("Remove Macros?")))) << "there are none";
  EXPECT_EQ(macros(), of_others);
}

TEST_F(HouseDeleteStory, ARoomTakesItsEventsAndMacrosWhenThePersonSaysSo) {
  house.content("macs.hlk") =
      "When~A1~Kitchen~Lamp~turns~on~Turn~On~B2~Hall~Lamp\r\n"
      "When~A3~Big~Kitchen~Lamp~turns~on~Turn~On~B2~Hall~Lamp\r\n";
  open(kKitchens, kKitchenEvents);
  delete_item("Kitchen");
  EXPECT_THAT(dialogs.messages,
              ElementsAre(HasSubstr("Really Delete?"), HasSubstr("Remove Events?"),
                          HasSubstr("Remove Macros?")));
  EXPECT_THAT(dialogs.messages, Each(HasSubstr("\r\n\r\nKitchen, with 2 devices")));
  EXPECT_EQ(events(), "Big Kitchen Lamp~A~3~40~07:30~on~daily~m\r\n");
  EXPECT_EQ(macros(), "When~A3~Big~Kitchen~Lamp~turns~on~Turn~On~B2~Hall~Lamp\r\n");
}

TEST_F(HouseDeleteStory, WhoeverWentOnIsLeftWhereTheyAre) {
  FrmMain& form = open(kKitchens);
  house.click_node("Kitchen");
  delete_item("Lamp~A~1", 2s);
  house.click_node("Hall", 40s);
  EXPECT_TRUE(form.frm_devices.visible) << "thrown out of the room that stays";
  EXPECT_EQ(form.Tree.selected.get(), form.Tree.find("Hall"));
  delete_item("Lamp2~A~2", 2s);
  house.click_node("Kitchen", 40s);
  EXPECT_TRUE(form.frm_home.visible) << "the card of what is deleted is still there";
}

TEST_F(HouseDeleteStory, WhatIsNotThereAnyMoreOrCannotBeReadIsNotCalledDeleted) {
  open(kKitchens);
  delete_item("Lamp~A~1", 1s);
  house.content("rmlst.hwd") = "Kitchen~~~\r\n";
  house.loop.advance(40s);
  EXPECT_EQ(house.status(), "Nothing was deleted: Kitchen, Lamp is not in the list any more");
  house.files.unreadable.insert(House::file("rmlst.hwd"));
  delete_item("Kitchen");
  EXPECT_THAT(house.status_texts, Contains("Your item could not be deleted"));
  EXPECT_THAT(house.status_texts, Not(Contains(HasSubstr("was deleted at"))));
  EXPECT_THAT(dialogs.messages.back(), HasSubstr("could not be read or written"));
}

TEST_F(HouseDeleteStory, ADeletionAndAPassWaitForEachOtherAndBothEnd) {
  FrmMain& form =
      open(kKitchens, "Hall Lamp~B~2~ ~20:01~off~daily~mtwufsr\r\n" + std::string(kKitchenEvents));
  house.interface_control.mains_time = 10s;
  house.run_until(20, 0, 58);
  select("Lamp~A~1");
  form.Tree.key_press(4);  // holds the files when the minute begins
  house.run_until(20, 1, 0);
  EXPECT_TRUE(form.filebusy);
  EXPECT_THAT(house.line(), IsEmpty());
  house.run_until(20, 1, 40);
  EXPECT_THAT(house.line(), SizeIs(1)) << "the event was lost";
  EXPECT_FALSE(form.Tree.find("Lamp~A~1"));
  EXPECT_FALSE(form.filebusy);

  // the other way round: a pass holds them when a deletion begins
  house.content("evelst.hwd") = "Hall Lamp~B~2~ ~20:02~off~daily~mtwufsr\r\n";
  house.run_until(20, 2, 1);
  ASSERT_TRUE(form.filebusy);
  select("Lamp2~A~2");
  form.Tree.key_press(4);
  house.run_until(20, 3, 0);
  EXPECT_FALSE(form.Tree.find("Lamp2~A~2"));
  EXPECT_THAT(form.Tree.find("Hall"), NotNull());
}

// A decision that could not be carried out must not come true at a later start.
TEST(HouseDeleteFailure, ADeletionThatFailsHasNotHappened) {
  for (const char* kept : {"macs.hlk", "evelst.hwd", "rmlst.hwd"}) {
    EventHouse house;
    StubbornFiles disk;
    disk.contents = {
        {House::file("rmlst.hwd"), kKitchens},
        {House::file("evelst.hwd"), kKitchenEvents},
        {House::file("macs.hlk"), "When~A1~Kitchen~Lamp~turns~on~Turn~On~B1~Hallway~Lamp\r\n"}};
    house.used_files = &disk;
    house.settings.write("type", "KitchenLamp", "bulb");
    FrmMain& form = house.open_connected();
    disk.kept = kept;
    form.Tree.selected = form.Tree.find("Lamp~A~1");
    house.press(form.Tree, 4, 40s);
    EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("your item is still there"));
    EXPECT_EQ(house.status(), "Your item could not be deleted");
    EXPECT_TRUE(form.enabled && !form.filebusy);
    disk.kept = "rmlst.hwd";
    form.txt_roomname.text = "Attic";
    house.click(form.Command3, 5s);
    EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("nothing was added"));
    disk.kept = "";
    house.click(form.Command3, 5s);
    house.forget_program();
    house.open(5s);
    const std::string rooms = disk.contents[House::file("rmlst.hwd")];
    EXPECT_THAT(rooms, HasSubstr("Attic~~~")) << "what was added since is lost";
    EXPECT_THAT(rooms, HasSubstr("Kitchen~Lamp~A~1"));
    EXPECT_EQ(house.settings.read("type", "KitchenLamp", ""), "bulb");
    EXPECT_FALSE(disk.contents.contains(House::file("tcdone.tmp")));
  }
}

TEST(HouseDeleteFailure, WhatIsNoDecisionChangesNoList) {
  for (const char* decision : {"", "rmlst.hwd: rmlst.hwd\r\nHall~~~\r\n"}) {
    MemoryFiles disk;
    for (const char* name : {"rmlst.hwd", "evelst.hwd", "macs.hlk", "tcmac.tmp", "tcev.tmp"})
      disk.contents[House::file(name)] = name;
    disk.contents[House::file("tcdone.tmp")] = decision;
    if (!*decision) disk.unreadable = {House::file("tcdone.tmp")};
    HouseFiles(disk, House::file("rmlst.hwd").parent_path()).recover();
    for (const char* name : {"rmlst.hwd", "evelst.hwd", "macs.hlk"})
      EXPECT_EQ(disk.contents[House::file(name)], name) << decision;
  }
}

}  // namespace
}  // namespace homewarden::testing
