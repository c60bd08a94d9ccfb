// The list of events: shown, marked, deleted and brought back.

#include "tests/stories/event_house.h"

namespace homewarden::testing {
namespace {

const char* const kPorch = "Hall Lamp~B~12~ ~sSet:+1~off~once~fs";
const char* const kMorning = "Kitchen Table Lamp~A~3~40~07:30~on~daily~mtwuf";

void delete_event(EventHouse& house, const std::string& device, int key = 4) {
  ASSERT_TRUE(house.select_event(device));
  house.press(house.form().ListView1, key);
}

void undo(EventHouse& house) {
  house.form().lab_undo.click();
  house.click(house.form().lab_undo, 3s);
}

TEST(EventListStory, SortsSelectsAndDeletes) {
  EventHouse house(
      "Lamp~A~3~40~12:00~on~daily~m\r\n\r\nBell~A~12~40~06:00~on~daily~\r\n"
      "big lamp~A~3~40~12:00~on~daily~m\r\nLamp~A~3~40~12:00~on~daily~m\r\n");
  house.content("macs.hlk") = "When~A1~Hall~Lamp~turns~on~Turn~On~B2~Fan\r\n\r\n";
  FrmMain& form = house.open_connected();
  const auto cells = [&form](std::size_t column) {
    Texts texts;
    for (const auto& row : form.ListView1.rows.get()) texts.push_back(row[column]);
    return texts;
  };
  EXPECT_THAT(form.ListVIew2.items.get(),
              ElementsAre("When A1 Hall Lamp turns on Turn On B2 Fan", ""));
  EXPECT_THAT(cells(0), ElementsAre("Bell", "big lamp", "Lamp", "Lamp"));
  form.ListView1.selected = 1;
  form.ListView1.column_click(3);
  EXPECT_THAT(cells(2), ElementsAre("12", "3", "3", "3")) << "texts, not numbers";
  EXPECT_EQ(form.ListView1.sort_key.get(), 2);
  EXPECT_EQ(form.ListView1.selected.get(), 1) << "the selection did not go with its row";
  form.ListView1.column_click(5);
  EXPECT_THAT(cells(4), ElementsAre("06:00", "12:00", "12:00", "12:00"));

  house.press(form.ListView1, 'd');
  EXPECT_THAT(cells(0), SizeIs(4));
  delete_event(house, "Lamp");
  EXPECT_THAT(house.event_lines(),
              ElementsAre("", "Bell~A~12~40~06:00~on~daily~", "big lamp~A~3~40~12:00~on~daily~m"))
      << "both identical lines go, and not one whose device ends in the same name";
  EXPECT_EQ(form.ListView1.sort_key.get(), 0);
  form.ListView1.key_press(4);  // nothing is selected
  house.loop.run_pending();
  EXPECT_THAT(cells(0), ElementsAre("Bell", "big lamp"));
  for (const char* device : {"Bell", "big lamp"}) {
    ASSERT_TRUE(house.select_event(device));
    house.click(form.mnu_delevent);
  }
  EXPECT_TRUE(form.lab_noevents.visible);
  house.dialogs.messages.clear();
  form.mnu_delevent.click();
  house.click(form.mnu_runeventnow);
  EXPECT_THAT(house.dialogs.messages,
              ::testing::UnorderedElementsAre("No events: You dont have any events to delete",
                                              "No events: You dont have any events to run"));
}

TEST(EventListStory, RunsAnEventNowAndOpensItsMenu) {
  EventHouse house(std::string(kPorch) + "\r\n" + kMorning + "\r\n");
  FrmMain& form = house.open_connected();
  int menus = 0;
  form.mnuPopup1.popped_up.connect([&menus] { ++menus; });
  form.ListView1.mouse_down(1);
  form.ListView1.mouse_down(2);
  EXPECT_EQ(menus, 1);
  house.click(form.mnu_runeventnow, 3s);
  EXPECT_THAT(house.interface_control.line_log, IsEmpty()) << "nothing was selected";
  for (const char* device : {"Hall Lamp", "Kitchen Table Lamp"}) {
    house.select_event(device);
    house.click(form.mnu_runeventnow, 3s);
  }
  EXPECT_EQ(house.notes(), (Texts{"send B12 3 20 20 50", "send A3 2 0 20 50", "send A3 5 100 20 50",
                                  "send A3 4 60 20 50"}));
  EXPECT_EQ(house.machine("KitchenTableLamp"), "True") << "not recorded like any other command";
  EXPECT_THAT(house.event_lines(), SizeIs(2));
}

TEST(EventListStory, LoadingAndCleaningWaitForTheFiles) {
  const char* const kBigHall = "Big Hall Lamp~B~12~ ~07:30~off~once~m";
  EventHouse house(std::string(kBigHall) + "\r\nHall Lamp~B~12~ ~07:30~off~once~mtwufsr\r\n");
  FrmMain& form = house.open_connected();
  form.once_removal[3] = "Hall Lamp~B~12~ ~07:30~off~once";
  form.filebusy = true;
  house.loop.advance(60s);
  EXPECT_THAT(house.event_lines(), SizeIs(2));
  form.filebusy = false;
  house.loop.advance(20s);
  EXPECT_THAT(house.event_lines(), ElementsAre(kBigHall));
  EXPECT_EQ(form.once_removal[3], "");

  // swapped away in the same seconds: no empty list comes into being
  form.once_removal[0] = "Hall Lamp~B~12~ ~07:30~off~once";
  house.files.contents.erase(House::file("evelst.hwd"));
  house.loop.advance(20s);
  EXPECT_THAT(house.event_lines(), ElementsAre("(missing)"));
  EXPECT_EQ(form.once_removal[0], "");
}

TEST(EventListStory, ADeletionCanBeUndone) {
  EventHouse house(std::string(kPorch) + "\r\n" + kMorning + "\r\n" + kPorch + "\r\n");
  FrmMain& form = house.open_connected();
  EXPECT_FALSE(form.lab_undo.visible);
  delete_event(house, "Hall Lamp", 127);
  EXPECT_THAT(house.event_lines(), ElementsAre(kMorning));
  EXPECT_EQ(form.lab_undo.caption.get(),
            "Deleted: Once, Fri, Sat 1 hour after sunset, Hall Lamp B12 off. Undo");
  EXPECT_TRUE(form.lab_undo.visible);
  undo(house);
  EXPECT_THAT(house.event_lines(), ElementsAre(kMorning, kPorch, kPorch));
  EXPECT_FALSE(form.lab_undo.visible);
  EXPECT_EQ(form.ListView1.selected.get(), 0) << "the event that came back is not selected";

  delete_event(house, "Hall Lamp");
  delete_event(house, "Kitchen Table Lamp");
  EXPECT_EQ(form.lab_undo.caption.get(),
            "Deleted: Weekdays at 07:30, Kitchen Table Lamp A3 on at 40\xA0%. Undo");
  house.files.stop_at(1);
  undo(house);
  EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("not back yet"));
  EXPECT_TRUE(form.lab_undo.visible) << "cannot be tried again";
  house.files.no_stop();
  house.content("evelst.hwd") = std::string(kMorning) + "\r\n";
  undo(house);
  EXPECT_THAT(house.event_lines(), ElementsAre(kMorning)) << "it was there again already";
  EXPECT_FALSE(form.lab_undo.visible);
}

TEST(EventListStory, ADeletionIsNotUndoneInAnotherProfileOrHouse) {
  EventHouse house(std::string(kPorch) + "\r\n" + kMorning + "\r\n");
  house.content("Holiday.txt") = std::string(kMorning) + "\r\n";
  FrmMain& form = house.open_connected();
  delete_event(house, "Hall Lamp");
  form.filebusy = true;  // both wait for the files, and the change of the profile gets them first
  form.com_profile.text = "Holiday";
  form.com_profile.click();
  ASSERT_TRUE(house.select_event("Kitchen Table Lamp"));
  form.ListView1.enabled = true;
  form.ListView1.key_press(4);
  house.form().lab_undo.click();
  form.filebusy = false;
  house.loop.advance(20s);
  EXPECT_THAT(house.event_lines(), ElementsAre(kMorning)) << "done to the other profile";
  EXPECT_FALSE(form.lab_undo.visible);

  delete_event(house, "Kitchen Table Lamp");
  EXPECT_TRUE(form.lab_undo.visible);
  form.Tree.selected = form.Tree.find("Table Lamp~A~3");
  house.press(form.Tree, 4, 60s);
  EXPECT_FALSE(form.lab_undo.visible) << "an event of a device that is not there would come back";
}

TEST(EventListStory, LinesThatDoNothingAreMarked) {
  EventHouse house(std::string(kPorch) + "\r\n" + kMorning +
                   "\r\nHall Fan~C~1~40~07:30~on~daily~m\r\n" +
                   "Attic Fan~D~1~40~07:30~on~daily~\r\n");
  house.content("macs.hlk") =
      "When~A4~Kitchen~Kettle~turns~on~Turn~On~C1~Hall~Fan\r\n\r\n"
      "When~A4~Kitchen~Kettle~turns~on~Turn~On~B12~Hall~Lamp\r\nrubbish\r\n";
  FrmMain& form = house.open_connected();
  const auto never = Pair(0, HasSubstr("no day of the week"));
  EXPECT_THAT(form.ListView1.marks.get(),
              ElementsAre(never, Pair(1, "Hall Fan C1 is not in the house.")));
  EXPECT_THAT(form.ListVIew2.marks.get(), ElementsAre(Pair(0, "Hall Fan C1 is not in the house."),
                                                      Pair(3, HasSubstr("no macro"))));
  form.lst_temproom.text = "Hall";
  form.txt_devname.text = "Fan";
  form.lst_housecode.text = "C";
  form.lst_device.text = "1";
  house.click(form.Command4, 30s);
  EXPECT_THAT(form.ListView1.marks.get(), ElementsAre(never)) << "the house has the fan now";
  EXPECT_THAT(form.ListVIew2.marks.get(), ElementsAre(Pair(3, HasSubstr("no macro"))));
}

// Catches: "Lamp sets itself off", where two lamps of two rooms do; A1 taken for A12.
TEST(EventListStory, DevicesOfOneNameAreToldApartInALoop) {
  EventHouse house;
  house.content("rmlst.hwd") = "Den~~~\r\nDen~Lamp~A~1\r\nHall~~~\r\nHall~Lamp~A~12\r\n";
  house.content("macs.hlk") =
      "When~A1~Den~Lamp~turns~on~Turn~On~A12~Hall~Lamp\r\n"
      "When~A12~Hall~Lamp~turns~on~Turn~On~A1~Den~Lamp\r\n";
  FrmMain& form = house.open_connected();
  house.click_node("Macros", 3s);
  EXPECT_THAT(form.lab_macroloop.caption.get(),
              StartsWith("Lamp in Den and Lamp in Hall set each other off"));
}

// Macros that silently do nothing.
TEST(EventListStory, AMacroListThatCannotBeReadIsTold) {
  EventHouse house;
  house.files.unreadable.insert(House::file("macs.hlk"));
  FrmMain& form = house.open_connected();
  house.click_node("Macros");
  house.loop.advance(3s);
  EXPECT_TRUE(form.lab_macronotice.visible && !form.lab_nomacros.visible);
  house.files.unreadable.clear();
  form.com_sel2.text = "Kitchen Kettle A4";
  form.com_savemacro.click();
  house.loop.advance(3s);
  EXPECT_FALSE(form.lab_macronotice.visible);
}

}  // namespace
}  // namespace homewarden::testing
