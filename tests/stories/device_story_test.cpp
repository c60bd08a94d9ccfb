// Devices switched and dimmed by hand, and the tree that shows them.

#include <gmock/gmock.h>

#include "tests/stories/house.h"

namespace homewarden::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Texts = std::vector<std::string>;

std::vector<std::string> shown_names(FrmMain& form) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < FrmMain::kSlots; ++i)
    if (form.device[i].visible) names.push_back(form.devicename[i].caption);
  return names;
}

TEST(DeviceStory, StartClickSlideClose) {
  House house;
  house.loop.set_wall_clock(2023, 6, 21, 20, 0, 0);
  FrmMain& form = house.open_connected();  // two seconds later
  house.click_node("Kitchen");
  EXPECT_THAT(shown_names(form), ElementsAre("Kettle", "Table Lamp"));
  EXPECT_EQ(form.lab_room.caption.get(), "Kitchen");
  EXPECT_TRUE(form.frm_devices.visible);
  EXPECT_FALSE(form.frm_home.visible);
  EXPECT_FALSE(form.image1[0].visible) << "a kettle cannot be dimmed";
  EXPECT_TRUE(form.image1[1].visible);

  // 20:00:02 a click on the lamp, with the line busy for 0.8 s
  house.interface_control.mains_time = 800ms;
  form.device[1].click();
  EXPECT_TRUE(form.enabled) << "nothing else can be used while one lamp is switched";
  EXPECT_EQ(form.cardstate[1].get(), CardState::kSending);
  EXPECT_TRUE(form.sending);
  EXPECT_EQ(house.machine("KitchenTableLamp"), "(none)") << "recorded before it was sent";
  house.loop.advance(800ms);
  EXPECT_EQ(house.status(), "Turned ON device with housecode A3 at 20:00:02");
  EXPECT_EQ(house.machine("KitchenTableLamp"), "True");
  EXPECT_EQ(house.machine("dimKitchenTableLamp"), "100");
  EXPECT_EQ(form.cardstate[1].get(), CardState::kIdle);
  EXPECT_TRUE(form.sending) << "the queue would not wait for the pause";
  house.loop.advance(1200ms);  // the pause begins at .8 and is counted from the second after it
  EXPECT_FALSE(form.sending);
  EXPECT_EQ(form.image1[1].value.get(), 100);
  EXPECT_EQ(form.device[1].file.get(), "/house/html/bulbon.gif");
  EXPECT_EQ(form.device[1].tool_tip.get(), "Click me to turn this device OFF");
  EXPECT_EQ(house.sounds.played, Texts({"1b1.wav", "1b2.wav"}));
  EXPECT_EQ(house.interface_control.take_notes(), Texts{"send A3 2 20 20 50"});

  // 20:00:04 its slider goes to 60
  house.sounds.played.clear();
  house.slide(1, 60);
  house.loop.run_pending();
  EXPECT_EQ(house.status(), "Please wait, setting dim level");
  house.loop.advance(2400ms);
  EXPECT_EQ(house.status(), "DIMMED device with housecode A3 to 60% at 20:00:06");
  house.loop.advance(1s);
  EXPECT_EQ(house.interface_control.take_notes(),
            Texts({"send A3 2 0 20 50", "send A3 5 100 20 50", "send A3 4 40 20 50"}));
  EXPECT_EQ(house.machine("KitchenTableLamp"), "True");
  EXPECT_EQ(house.machine("dimKitchenTableLamp"), "60");
  EXPECT_EQ(form.image1[1].value.get(), 60);
  EXPECT_EQ(house.sounds.played, Texts({"1b2.wav", "1b2.wav"}));

  // a click on its node in the tree switches it off
  house.click_node("Table Lamp~A~3");
  house.loop.advance(3s);
  EXPECT_EQ(house.interface_control.take_notes(), Texts{"send A3 3 20 20 50"});
  EXPECT_EQ(house.machine("KitchenTableLamp"), "False");
  EXPECT_EQ(house.machine("dimKitchenTableLamp"), "20");
  EXPECT_EQ(form.image1[1].value.get(), 20);
  EXPECT_EQ(form.device[1].tool_tip.get(), "Click me to turn this device ON");

  form.close_requested();
  house.loop.run_pending();
  EXPECT_TRUE(house.loop.has_quit());
}

TEST(DeviceStory, StepsAreSentAndRecordNothing) {
  House house;
  FrmMain& form = house.open_connected();
  Module1 module1(house.loop, house.registry, house.services, "");
  DeviceState state(module1);
  DeviceCommands commands(form.Statusbar, form, house.loop, module1, house.interface_control,
                          state);
  Operations operations([](std::exception_ptr) { FAIL(); });
  house.interface_control.mains_time = 1s;
  const auto step = [&operations](Task<bool> command) {
    operations.start([](Task<bool> task) -> Task<void> { co_await task; }(std::move(command)));
  };
  step(commands.turndim({"B", 12, "HallLamp"}));
  EXPECT_TRUE(form.sending);
  house.loop.advance(1s);
  EXPECT_FALSE(form.sending) << "turndim does not pause";
  step(commands.turnbright({"B", 12, "HallLamp"}));
  EXPECT_FALSE(form.sending);
  house.loop.advance(1s);
  EXPECT_THAT(house.status(), HasSubstr("BRIGHT command sent to device with housecode B12 at "));
  EXPECT_EQ(house.interface_control.take_notes(),
            Texts({"send B12 4 20 20 50", "send B12 5 20 20 50"}));
  EXPECT_EQ(house.machine("HallLamp"), "(none)");
}

TEST(DeviceStory, RefusesWhatCannotBeSwitchedAndSendsNothing) {
  House house("Attic~Odd~Q~3\r\nAttic~Odder~A~17\r\nAttic~Fine~A~1\r\n");
  house.interface_control.status_of_port.clear();
  FrmMain& form = house.open_connected();
  house.dialogs.messages.clear();
  house.click_node("Attic");
  EXPECT_THAT(shown_names(form), ElementsAre("Fine", "Odd", "Odder"));
  form.device[0].click();
  house.loop.advance(1s);
  EXPECT_THAT(house.dialogs.messages.back(),
              HasSubstr("not possible!: Sorry, you need to connect"));

  form.connected = true;
  for (const std::size_t slot : {1u, 2u}) {
    form.device[slot].click();
    house.loop.advance(1s);
    EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("House codes are A to P"));
  }
  form.device[3].click();  // an empty slot
  house.loop.advance(1s);
  EXPECT_EQ(house.dialogs.messages.back(),
            "Error: Sorry, couldn`t find this device in the device list.");
  EXPECT_TRUE(house.interface_control.take_line_log().empty());
  EXPECT_TRUE(form.enabled);
}

TEST(DeviceStory, ASliderIsCarriedOutWhileAListIsInUseAndGoesBackWithoutAnInterface) {
  House house;
  FrmMain& form = house.open_connected();
  house.click_node("Hall");
  form.filebusy = true;  // somebody works on the files
  house.slide(0, 50);
  house.loop.advance(5s);
  EXPECT_EQ(house.machine("dimHallLamp"), "50");
  EXPECT_TRUE(form.filebusy) << "the slider took the files from who works on them";
  form.connected = false;
  house.slide(0, 80);
  house.loop.advance(5s);
  EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("not possible!"));
  EXPECT_EQ(form.image1[0].value.get(), 50) << "the slider shows what was not done";
}

TEST(DeviceStory, TreeShowsThePanelsAndPresetsTheTime) {
  House house;
  house.loop.set_wall_clock(2023, 6, 21, 7, 5);
  FrmMain& form = house.open_connected();
  const auto only = [&form](Frame& shown) {
    for (Frame* frame : {&form.frm_home, &form.frm_devices, &form.frm_event, &form.frm_macros,
                         &form.Frame4, &form.Frame5, &form.frm_addroom, &form.frm_adddevice})
      if (frame->visible != (frame == &shown)) return false;
    return true;
  };
  house.click_node("Events");
  EXPECT_TRUE(only(form.frm_event));
  EXPECT_EQ(form.lst_hour.text.get() + form.lst_min.text.get(), "0705");
  house.click_node("Web Server");
  EXPECT_TRUE(only(form.Frame4));
  house.click_node("Profiles");
  EXPECT_TRUE(only(form.Frame5));
  house.click_node("Macros");
  EXPECT_TRUE(only(form.frm_macros));
  house.click_node("Home");
  EXPECT_TRUE(only(form.frm_home));
  form.Label3.click();
  EXPECT_TRUE(only(form.frm_addroom));
  EXPECT_EQ(form.lst_eventdevice.text.get(), "Kitchen Table Lamp A3");
  EXPECT_THAT(form.lst_codes.items.get(), ElementsAre("B~12", "A~4", "A~3"));
  EXPECT_EQ(form.lst_temproom.text.get(), "Kitchen");

  int menus = 0;
  form.mnuPopup.popped_up.connect([&menus] { ++menus; });
  form.Tree.mouse_down(1);
  EXPECT_EQ(menus, 0);
  form.Tree.mouse_down(2);
  EXPECT_EQ(menus, 1);
}

TEST(DeviceStory, MoreThanTenDevicesAndADeviceOfAnotherRoom) {
  std::string list;
  for (char letter = 'a'; letter <= 'l'; ++letter)
    list += std::string("Big~") + letter + "~C~1\r\n";
  House house(list + "Empty~~~\r\nSmall~z~C~2\r\n");
  FrmMain& form = house.open_connected();
  house.click_node("Big");
  EXPECT_EQ(shown_names(form).size(), 10u);
  house.click_node("l~C~1");  // the twelfth has no card
  house.loop.advance(3s);
  EXPECT_EQ(house.machine("Bigl"), "True");
  house.click_node("z~C~2");
  house.loop.advance(3s);
  EXPECT_EQ(form.lab_room.caption.get(), "Small");
  EXPECT_THAT(shown_names(form), ElementsAre("z"));
  EXPECT_EQ(house.machine("Smallz"), "True");
  EXPECT_EQ(house.interface_control.take_notes(),
            Texts({"send C1 2 20 20 50", "send C2 2 20 20 50"}));
  EXPECT_FALSE(form.lab_nodevices.visible);
  house.click_node("Empty");
  EXPECT_TRUE(form.lab_nodevices.visible);
  EXPECT_TRUE(shown_names(form).empty());
}

TEST(DeviceStory, WindowServicesTellWhatFailed) {
  House house;
  FrmMain& form = house.open_connected();
  Operations operations([](std::exception_ptr) { FAIL(); });
  WindowServices services(form, form, form, operations, house.desktop, house.dialogs);
  house.desktop.browser_starts = false;
  operations.start(services.link("http://localhost/"));
  house.loop.run_pending();
  EXPECT_EQ(house.dialogs.messages.back(), "URL FAILED: Web Page not Opened");
  house.desktop.has_browser = false;
  operations.start(services.link("http://localhost/"));
  house.loop.run_pending();
  EXPECT_EQ(house.dialogs.messages.back(), "BROWSER NOT FOUND: Could not find associated browser!");
  EXPECT_EQ(house.desktop.opened.size(), 1u);
}

TEST(DeviceStory, TroubleWithTheInterfaceStandsInPanelThreeUntilItIsOver) {
  House house;
  FrmMain& form = house.open_connected();
  house.interface_control.TroubleChanged("STATUS: A3 On could not be sent");
  EXPECT_EQ(form.Statusbar.panel3.get(), "STATUS: A3 On could not be sent");
  house.interface_control.TroubleChanged("");
  EXPECT_EQ(form.Statusbar.panel3.get(), "STATUS: Ready");
}

}  // namespace
}  // namespace homewarden::testing
