// The whole program on the real driver and an emulated interface at the speed of the mains.

#include "core/program/service_program.h"
#include "platform/cm11/driver.h"
#include "tests/cm11/emulated_port.h"
#include "tests/cm11/hex_text.h"
#include "tests/stories/event_house.h"
#include "tools/emulator/emulator.h"

namespace homewarden::testing {
namespace {

struct WireStory : ::testing::Test {
  WireStory() {
    house.connected = &driver;
    house.open(2s);
    house.click_node("Kitchen");
    port.written.clear();
  }

  // What the computer wrote since the last call.
  std::string written() { return hex(std::exchange(port.written, {})); }
  std::string module(cm11::Address address) { return emulator.modules().at(address).text(); }

  House house;
  emulator::Emulator emulator;
  EmulatedPort port{house.loop, emulator, 2};
  cm11::Driver driver{house.loop, port};
  Operations operations{[](std::exception_ptr) { FAIL(); }};
};

TEST_F(WireStory, AClickAndASlideReachTheLamp) {
  ASSERT_TRUE(house.form().connected);
  house.click(house.form().device[1], 5s);
  EXPECT_EQ(written(), "04 62 00 06 62 00") << "A3 On";
  EXPECT_EQ(house.machine("KitchenTableLamp"), "True");

  house.slide(1, 60, 20s);
  // On; Bright by 22 of 22 steps; Dim by 9 of 22, each behind its address.
  EXPECT_EQ(written(), "04 62 00 06 62 00 04 62 00 B6 65 00 04 62 00 4E 64 00");
  EXPECT_EQ(module({0, 3}), "on 59 %");
  EXPECT_EQ(house.machine("KitchenTableLamp"), "True");
  EXPECT_EQ(house.machine("dimKitchenTableLamp"), "60");
  EXPECT_EQ(house.form().Statusbar.panel3.get(), "STATUS: Ready");
}

TEST_F(WireStory, AButtonOnTheWallSwitchesASecondLampThroughAMacro) {
  house.content("rmlst.hwd") += "Kitchen~Bell~A~1\r\n";
  house.content("macs.hlk") = "When~A1~Kitchen~Bell~turns~on~Turn~On~B12~Hall~Lamp\r\n";
  const auto start = house.loop.uptime();
  const auto line_before = emulator.mains_time();
  emulator.command("remote A1 on", start);
  port.settle();
  ASSERT_TRUE(house.loop.advance_until([this] { return module({1, 12}) == "on 100 %"; }, 20s));
  const auto mains = emulator.mains_time() - line_before;
  // The queue is looked at every two seconds; the interface asks the computer to fetch what it
  // heard once a second.
  EXPECT_LE(house.loop.uptime() - start, mains + 2s + 1s + 200ms);
  EXPECT_GE(mains, 1500ms) << "two commands cannot have been on the line";
  house.loop.advance(3s);
  EXPECT_EQ(house.machine("HallLamp"), "True");
  EXPECT_EQ(house.form().txt_queue.text.get(), "");
}

TEST_F(WireStory, PullingTheCableIsToldAndPluggingItInMendsIt) {
  port.unplug();
  house.loop.advance(2s);
  EXPECT_NE(house.form().Statusbar.panel3.get(), "STATUS: Ready");
  house.click(house.form().device[1], 30s);
  EXPECT_THAT(house.form().Statusbar.panel3.get(), HasSubstr("A3 On"));
  EXPECT_TRUE(house.form().enabled) << "the window stayed disabled";
  port.plug(6);  // under another name
  house.loop.advance(5s);
  EXPECT_EQ(house.form().Statusbar.panel3.get(), "STATUS: Ready");
  house.click(house.form().device[0], 5s);
  EXPECT_EQ(module({0, 4}), "on 100 %");
}

TEST_F(WireStory, ClosingInTheMiddleOfACommandEndsTheProgramBehindIt) {
  house.slide(1, 60, 1s);
  house.close(15s);
  EXPECT_TRUE(house.loop.has_quit());
  EXPECT_FALSE(port.is_open());
  EXPECT_EQ(module({0, 3}), "on 59 %") << "the lamp was left in the middle";
  EXPECT_EQ(house.machine("dimKitchenTableLamp"), "60");
}

// An interface that comes five minutes late, and goes away for an hour; nobody is there to help.
TEST(ServiceOnTheWire, FindsItsInterfaceAgainAndTellsWhatItCouldNotSend) {
  EventHouse house(
      "Kitchen Kettle~A~4~100~12:03~on~daily~mtwufsr~\r\n"
      "Kitchen Table Lamp~A~3~100~12:07~on~daily~mtwufsr~\r\n"
      "Hall Lamp~B~12~100~12:30~on~daily~mtwufsr~\r\n"
      "Kitchen Table Lamp~A~3~100~13:12~off~daily~mtwufsr~\r\n");
  house.loop.set_wall_clock(2023, 6, 21, 12, 0, 20);
  emulator::Emulator emulator;
  EmulatedPort port(house.loop, emulator, 2);
  cm11::Driver driver(house.loop, port);
  port.unplug();
  house.connected = &driver;
  ServiceProgram service(house.house_platform(House::kFolder), [](std::exception_ptr) { FAIL(); });
  service.start();
  const auto unsent = [&service] { return service.frm_main.Statusbar.unsent.caption.get(); };
  const auto lamp = [&emulator] { return emulator.modules().at({0, 3}).text(); };

  house.loop.advance(5min);
  EXPECT_EQ(unsent(), "1 not sent") << "the event of 12:03 went nowhere";
  EXPECT_THAT(house.web.starts, SizeIs(1)) << "the pages wait for the interface";
  port.plug(2);
  house.run_until(12, 8);
  EXPECT_EQ(service.frm_main.Statusbar.panel3.get(), "STATUS: Ready");
  EXPECT_EQ(lamp(), "on 100 %");

  house.run_until(12, 10);
  port.unplug();
  house.run_until(13, 9);
  EXPECT_FALSE(house.loop.has_quit());
  EXPECT_EQ(unsent(), "2 not sent");
  EXPECT_NE(service.frm_main.Statusbar.panel3.get(), "STATUS: Ready");
  port.plug(6);  // under another name
  house.run_until(13, 13);
  EXPECT_EQ(service.frm_main.Statusbar.panel3.get(), "STATUS: Ready");
  EXPECT_EQ(lamp(), "off");
}

}  // namespace
}  // namespace homewarden::testing
