// Devices switched and dimmed by hand, and the tree that shows them.

#include "tests/stories/house.h"

namespace homewarden::testing {
namespace {

Texts shown_names(FrmMain& form) {
  Texts names;
  for (std::size_t i = 0; i < FrmMain::kSlots; ++i)
    if (form.device[i].visible) names.push_back(form.devicename[i].caption);
  return names;
}

TEST(DeviceStory, StartClickSlideClose) {
  House house;
  FrmMain& form = house.open_connected_at(20, 0, 0);  // two seconds later
  house.click_node("Kitchen");
  EXPECT_THAT(shown_names(form), ElementsAre("Kettle", "Table Lamp"));
  EXPECT_FALSE(form.image1[0].visible) << "a kettle cannot be dimmed";
  EXPECT_TRUE(form.image1[1].visible);

  // 20:00:02 a click on the lamp, with the line busy for 0.8 s
  house.interface_control.mains_time = 800ms;
  form.device[1].click();
  EXPECT_EQ(house.machine("KitchenTableLamp"), "(none)") << "recorded before it was sent";
  house.loop.advance(800ms);
  EXPECT_EQ(house.status(), "Turned ON device with housecode A3 at 20:00:02");
  EXPECT_EQ(house.machine("KitchenTableLamp"), "True");
  EXPECT_TRUE(form.sending) << "the queue would not wait for the pause";
  house.loop.advance(1200ms);  // the pause begins at .8 and is counted from the second after it
  EXPECT_FALSE(form.sending);
  EXPECT_EQ(form.device[1].file.get(), "/house/html/bulbon.gif");
  EXPECT_EQ(form.device[1].tool_tip.get(), "Click me to turn this device OFF");
  EXPECT_EQ(house.sounds.played, Texts({"1b1.wav", "1b2.wav"}));
  EXPECT_EQ(house.notes(), Texts{"send A3 2 20 20 50"});

  // 20:00:04 its slider goes to 60
  house.sounds.played.clear();
  house.slide(1, 60);
  EXPECT_EQ(house.status(), "Please wait, setting dim level");
  house.loop.advance(2400ms);
  EXPECT_EQ(house.status(), "DIMMED device with housecode A3 to 60% at 20:00:06");
  house.loop.advance(1s);
  EXPECT_EQ(house.notes(),
            Texts({"send A3 2 0 20 50", "send A3 5 100 20 50", "send A3 4 40 20 50"}));
  EXPECT_EQ(house.sounds.played, Texts({"1b2.wav", "1b2.wav"}));

  // a click on its node in the tree switches it off
  house.click_node("Table Lamp~A~3", 3s);
  EXPECT_EQ(house.notes(), Texts{"send A3 3 20 20 50"});
  EXPECT_EQ(form.device[1].tool_tip.get(), "Click me to turn this device ON");

  house.close(1s);  // service mode, which the first minute has switched on, takes a second
  EXPECT_TRUE(house.loop.has_quit());
}

TEST(DeviceStory, RefusesWhatCannotBeSwitchedAndSendsNothing) {
  House house("Attic~Odd~Q~3\r\nAttic~Odder~A~17\r\nAttic~Fine~A~1\r\n");
  house.interface_control.status_of_port.clear();
  FrmMain& form = house.open_connected();
  house.dialogs.messages.clear();
  house.click_node("Attic");
  EXPECT_THAT(shown_names(form), ElementsAre("Fine", "Odd", "Odder"));
  house.click(form.device[0], 1s);
  EXPECT_THAT(house.dialogs.messages.back(),
              HasSubstr("not possible!: Sorry, you need to connect"));

  form.connected = true;
  for (const std::size_t slot : {1u, 2u}) {
    house.click(form.device[slot], 1s);
    EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("House codes are A to P"));
  }
  form.device[3].click();  // an empty slot
  house.loop.advance(1s);
  EXPECT_EQ(house.dialogs.messages.back(),
            "Error: Sorry, couldn`t find this device in the device list.");
  EXPECT_TRUE(house.line().empty());
  EXPECT_TRUE(form.enabled);
}

TEST(DeviceStory, ASliderIsCarriedOutWhileAListIsInUseAndGoesBackWithoutAnInterface) {
  House house;
  FrmMain& form = house.open_connected();
  house.click_node("Hall");
  form.filebusy = true;  // somebody works on the files
  house.slide(0, 50, 5s);
  EXPECT_EQ(house.machine("dimHallLamp"), "50");
  EXPECT_TRUE(form.filebusy) << "the slider took the files from who works on them";
  form.connected = false;
  house.slide(0, 80, 5s);
  EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("not possible!"));
  EXPECT_EQ(form.image1[0].value.get(), 50) << "the slider shows what was not done";
}

TEST(DeviceStory, TreeShowsThePanelsAndPresetsTheTime) {
  House house;
  FrmMain& form = house.open_connected_at(7, 5);
  const auto only = [&form](Frame& shown) {
    for (Frame* frame : {&form.frm_home, &form.frm_devices, &form.frm_event, &form.frm_macros,
                         &form.Frame4, &form.Frame5, &form.frm_addroom, &form.frm_adddevice})
      if (frame->visible != (frame == &shown)) return false;
    return true;
  };
  const std::pair<const char*, Frame*> nodes[] = {{"Events", &form.frm_event},
                                                  {"Web Server", &form.Frame4},
                                                  {"Profiles", &form.Frame5},
                                                  {"Macros", &form.frm_macros},
                                                  {"Home", &form.frm_home}};
  for (const auto& [node, panel] : nodes) {
    house.click_node(node);
    EXPECT_TRUE(only(*panel)) << node;
  }
  EXPECT_EQ(form.lst_hour.text.get() + form.lst_min.text.get(), "0705");
  form.Label3.click();
  EXPECT_TRUE(only(form.frm_addroom));
  EXPECT_EQ(form.lst_eventdevice.text.get(), "Kitchen Table Lamp A3");

  int menus = 0;
  form.mnuPopup.popped_up.connect([&menus] { ++menus; });
  form.Tree.mouse_down(1);
  EXPECT_EQ(menus, 0);
  form.Tree.mouse_down(2);
  EXPECT_EQ(menus, 1);
}

TEST(DeviceStory, TheTwelfthDeviceOfARoomIsSwitchedWithoutACard) {
  std::string list;
  for (char letter = 'a'; letter <= 'l'; ++letter)
    list += std::string("Big~") + letter + "~C~1\r\n";
  House house(list);
  FrmMain& form = house.open_connected();
  house.click_node("Big");
  EXPECT_EQ(shown_names(form).size(), 10u);
  house.click_node("l~C~1", 3s);  // the twelfth has no card
  EXPECT_EQ(house.machine("Bigl"), "True");
  EXPECT_EQ(house.notes(), Texts{"send C1 2 20 20 50"});
}

}  // namespace
}  // namespace homewarden::testing
