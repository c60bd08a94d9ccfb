// Finding rooms, devices, panels and events by a few letters, and doing what was found.

#include "core/house/find_words.h"
#include "tests/stories/house.h"

namespace homewarden::testing {
namespace {

class FinderStory : public ::testing::Test {
 protected:
  FinderStory()
      : house(
            "Living Room~~~\r\nLiving Room~Reading Lamp~A~12\r\nLiving Room~Table Lamp~A~13\r\n"
            "Living Room~Radio~A~2\r\nBedroom~~~\r\nBedroom~Lamp~B~1\r\nOffice~~~\r\n"
            "Office~On Air Sign~C~1\r\nOffice~Caf\xE9~C~2\r\n") {
    house.settings.write("type", "LivingRoomReadingLamp", "bulb");
    house.content("evelst.hwd") =
        "Bedroom Lamp~B~1~100~07:30~on~daily~mtwufsr\r\nBedroom Lamp~B~1~ ~23:10~off~daily~m\r\n";
    house.open_connected_at(12, 0);
    house.form().opened();
  }
  std::vector<std::string> find(const std::string& text) {
    house.form().txt_find.text = text;
    std::vector<std::string> titles;
    for (const Found& found : house.form().found.get()) titles.push_back(found.title);
    return titles;
  }
  void enter(int position = 0) {
    house.form().chosen = position;
    house.form().do_it();
    house.loop.advance(10s);
  }

  House house;
};

TEST_F(FinderStory, AFewLettersAndACommandSwitchTheRightDevice) {
  EXPECT_THAT(find("liv lamp off"), ElementsAre("Turn Reading Lamp off", "Turn Table Lamp off"));
  EXPECT_THAT(find("read 40"), ElementsAre("Set Reading Lamp to 40 %"));
  EXPECT_THAT(find("table 40%"), IsEmpty()) << "an appliance has no level";
  EXPECT_THAT(find("on air"), Contains("Turn On Air Sign on")) << "the name begins with a command";
  EXPECT_EQ(find("cafe").front(), "Turn Caf\xE9 on") << "an accent is not typed";
  EXPECT_THAT(find("zzz"), IsEmpty());
  EXPECT_TRUE(house.form().lab_nothing.visible);
  EXPECT_EQ(find("settings").front(), "Settings");
  EXPECT_EQ(find("sunset").front(), "Settings");
  EXPECT_EQ(find("lamp").front(), "Turn Lamp on") << "what is called so and not longer";
  EXPECT_EQ(find("radio").front(), "Turn Radio on");
  enter();
  EXPECT_THAT(house.line(), ElementsAre(EndsWith("A2 2")));
  EXPECT_FALSE(house.form().frm_finder.visible);
  house.form().opened();
  EXPECT_THAT(find(""), Contains("Turn Radio off")) << "nothing typed: what is on";
  EXPECT_EQ(find("radio").front(), "Turn Radio off");
  EXPECT_THAT(find("living off"), Contains("Turn Living Room off"));
  const auto found = find("living off");
  enter(static_cast<int>(std::find(found.begin(), found.end(), "Turn Living Room off") -
                         found.begin()));
  EXPECT_THAT(house.line(), ElementsAre(EndsWith("A2 3")))
      << "what was off already went to the line";
}

TEST_F(FinderStory, ANumberThatNamesARoomOrADeviceIsNoLevel) {
  house.settings.write("type", "LoftLamp", "bulb");
  house.content("rmlst.hwd") =
      "Loft~~~\r\nLoft~Lamp~A~1\r\nLoft 1~~~\r\nLoft 2~~~\r\nLoft 2~Lamp 9~A~3\r\n";
  house.open_connected_at(12, 0);
  EXPECT_EQ(find("loft 2").front(), "Loft 2");
  EXPECT_EQ(find("loft 1").front(), "Loft 1") << "a room without devices";
  EXPECT_EQ(find("lamp 9").front(), "Turn Lamp 9 on");
  EXPECT_EQ(find("lamp 9 %").front(), "Set Lamp to 9 %");
  EXPECT_EQ(find("lamp 40").front(), "Set Lamp to 40 %");
}

TEST_F(FinderStory, WhatIsChosenStaysChosenWhenTheHouseChanges) {
  const std::string wanted = find("lamp on")[1];
  house.form().chosen = 1;
  house.receive("B1", 2, 5s);
  EXPECT_EQ(house.form().found.get()[2].title, "Turn Lamp on") << "it is on already";
  EXPECT_EQ(house.form().found.get()[static_cast<std::size_t>(house.form().chosen)].title, wanted);
}

TEST_F(FinderStory, RoomsPanelsAndEventsAreShown) {
  EXPECT_EQ(find("bedroom").front(), "Bedroom") << "a room's name alone means the room";
  enter();
  EXPECT_EQ(house.form().lab_room.caption.get(), "Bedroom");
  house.form().Label3.click();
  house.form().opened();
  find("bedroom");
  enter();
  EXPECT_TRUE(house.form().frm_devices.visible) << "behind a panel that has no node";
  EXPECT_TRUE(house.line().empty()) << "looking switched something";
  house.form().opened();
  EXPECT_THAT(find("events bed"), ElementsAre("07:30, Bedroom Lamp on", "23:10, Bedroom Lamp off"));
  enter(1);
  EXPECT_TRUE(house.form().frm_event.visible);
  EXPECT_EQ(house.form().ListView1.selected, 1);
  house.form().ListView1.double_click();
  house.form().opened();
  find("radio");
  house.form().show_it();
  EXPECT_TRUE(find("prof").empty() && house.form().frm_event.visible) << "left an edited event";
  house.form().cmd_cancel.click();
  house.form().opened();
  find("city");
  enter();
  EXPECT_TRUE(house.form().frm_settings.visible);
  house.form().opened();
  EXPECT_EQ(find("prof").front(), "Profiles");
  EXPECT_EQ(find("speech").front(), "Voice");
  house.form().do_it();
  EXPECT_TRUE(house.form().Frame3.visible) << "a page that the tree does not have";
  house.form().closed();
  EXPECT_FALSE(house.form().frm_finder.visible);
}

}  // namespace
}  // namespace homewarden::testing
