#include "tests/cm11/driver_fixture.h"

namespace homewarden::testing {

using namespace std::chrono_literals;
namespace {

using Texts = std::vector<std::string>;

}  // namespace

// Catches: waits of the driver's own on the way of a command, a level that is off by a step.
TEST_F(DriverTest, SendsInTheTimeThatTheMainsTakes) {
  open();
  const std::pair<int, double> commands[] = {
      {kX10On, 0}, {kX10Dim, 100}, {kX10Bright, 50}, {kX10Off, 20}};
  const Texts states = {"on 100 %", "on 0 %", "on 50 %", "off"};
  for (std::size_t i = 0; i < states.size(); ++i) {
    const auto begun = loop.uptime();
    const auto mains = emulator->mains_time();
    EXPECT_EQ(finish(send("D3", commands[i].first, commands[i].second)), 0);
    const auto took = loop.uptime() - begun;
    const auto needed = emulator->mains_time() - mains;
    // Ten or so bytes at 4800 baud are in it: 20 ms of 783.
    EXPECT_LE(took - needed, 25ms) << i;
    EXPECT_EQ(module("D3"), states[i]);
  }
  EXPECT_TRUE(troubles.empty());
}

// Catches: the function of one command sent to the address of another, an order that is lost.
TEST_F(DriverTest, CommandsQueueInTheirOrder) {
  open();
  std::vector<Result> results;
  for (int i = 1; i <= 16; ++i)
    results.push_back(send(cm11::Address{i % 3, i}, i % 2 == 0 ? kX10On : kX10Off));
  for (const auto& result : results) EXPECT_EQ(finish(result), 0);
  ASSERT_EQ(emulator->frames().size(), 32U);
  for (int i = 1; i <= 16; ++i) {
    const auto& function = emulator->frames()[static_cast<std::size_t>(2 * i - 1)];
    EXPECT_EQ(function.modules, (std::vector{cm11::Address{i % 3, i}}));
    EXPECT_EQ(function.what.code, i % 2 == 0 ? kX10On : kX10Off);
  }
}

// Catches: nonsense on the power line, and a caller that is not told.
TEST_F(DriverTest, RefusesWhatIsNoCommand) {
  open();
  port->written.clear();
  for (const auto& [house, unit] :
       {std::pair{"Q", "1"}, {"", "1"}, {"AB", "1"}, {"A", "17"}, {"A", "0"}, {"A", "x"}}) {
    EXPECT_NE(finish(start(driver->SendX10(house, unit, kX10On, 0, 20, 50)), 0ms), 0);
    EXPECT_EQ(last_trouble(), std::string("STATUS: ") + house + unit +
                                  " On could not be sent, there is no such address");
  }
  for (const int function : {12, -1}) {
    EXPECT_NE(finish(send("A1", function), 0ms), 0);
    EXPECT_EQ(last_trouble(), "STATUS: A1 function " + std::to_string(function) +
                                  " could not be sent, there is no such command");
  }
  finish(start(driver->SendX10(std::string(4000, '\x90'), "1", kX10On, 0, 20, 50)), 0ms);
  EXPECT_EQ(last_trouble(), "STATUS: " + std::string(20, ' ') +
                                "... On could not be sent, there is no such address")
      << "a text of the network's, with what a terminal obeys";
  EXPECT_EQ(port->written, "");
  EXPECT_EQ(finish(send("A1", kX10On)), 0);
  EXPECT_EQ(last_trouble(), "") << "all is well after the next success";
  EXPECT_EQ(finish(start(driver->SendX10("A", "", kX10AllUnitsOff, 0, 20, 50))), 0);
  EXPECT_EQ(module("A1"), "off");
}

// Catches: a result that means something else to the search for the port, a port left open.
TEST_F(DriverTest, OpeningTellsAMissingPortFromASilentOne) {
  driver->PortNumber(7);
  EXPECT_EQ(finish(start(driver->OpenInterface()), 0ms), 1);
  port->add_silent_port(8);
  driver->PortNumber(8);
  EXPECT_EQ(finish(start(driver->OpenInterface()), 4s), 2);
  EXPECT_FALSE(port->is_open());
  EXPECT_EQ(finish(send("A1", kX10On), 0ms), 1);
  EXPECT_EQ(troubles, (Texts{"STATUS: A1 On could not be sent, no interface is open"}));
  driver->PortNumber(3);
  EXPECT_EQ(finish(start(driver->OpenInterface()), 1s), 0);
  EXPECT_TRUE(emulator->frames().empty()) << "looking for the interface uses the power line";
}

// Catches: an interface that is not found because it has something else to say first.
TEST_F(DriverTest, OpeningServesPollsAndClockRequests) {
  console("remote A3 on");
  loop.advance(3s);
  EXPECT_EQ(finish(start(driver->OpenInterface()), 4s), 0);
  loop.run_pending();
  EXPECT_EQ(received, (Texts{"A3 2"}));
  console("clock-request");
  EXPECT_EQ(finish(start(driver->OpenInterface()), 4s), 0);
  console("clock-request");
  console("fault no-clock-checksum");
  EXPECT_EQ(finish(start(driver->OpenInterface()), 5s), 0);
  EXPECT_FALSE(emulator->wants_computer());
}

// Catches: an interface that is dead for hours while commands pile up without a word.
TEST_F(DriverTest, GivesUpOnASilentInterface) {
  open();
  emulator->set_plugged(false);  // nobody unplugs the port: its other end has lost its power
  const auto first = send("A3", kX10On);
  const auto second = send("A4", kX10Dim, 50);
  EXPECT_NE(finish(first, 10s), 0);
  EXPECT_NE(finish(second, 10s), 0);
  loop.run_pending();
  EXPECT_EQ(troubles, (Texts{"STATUS: A3 On could not be sent, the interface does not answer",
                             "STATUS: A4 Dim could not be sent, the interface does not answer"}));
  emulator->set_plugged(true);
  EXPECT_EQ(finish(send("A3", kX10On)), 0);
  EXPECT_EQ(last_trouble(), "");
}

// Catches: a replugged adapter that needs a restart of the program, a search that takes other
// people's ports, commands that are lost while the cable is out.
TEST_F(DriverTest, FindsAReplacedAdapterUnderAnotherName) {
  port->add_silent_port(4);
  open();
  port->opened.clear();
  port->unplug();
  loop.advance(100ms);
  EXPECT_EQ(troubles, (Texts{"STATUS: Interface unplugged, looking for it"}));
  const auto waiting = send("A3", kX10On);
  loop.advance(2s);
  port->plug(9);
  EXPECT_EQ(finish(waiting, 4s), 0);
  loop.run_pending();
  EXPECT_EQ(module("A3"), "on 100 %");
  EXPECT_EQ(last_trouble(), "");
  EXPECT_EQ(port->opened, (std::vector{9})) << "port 4 was there all the time";

  port->unplug();
  loop.advance(1min);
  EXPECT_NE(finish(send("A3", kX10Off), 0ms), 0) << "it has been looked for long enough";
  EXPECT_EQ(last_trouble(), "STATUS: A3 Off could not be sent, the interface is unplugged");
  port->plug(3);
  loop.advance(2s);
  EXPECT_EQ(last_trouble(), "");
  EXPECT_EQ(finish(send("A3", kX10Off)), 0);
}

// Catches: a command that waits for an unplugged interface for ever, or is sent twice.
TEST_F(DriverTest, UnpluggedInTheMiddleOfACommand) {
  open();
  const auto dim = send("A3", kX10Dim, 50);
  const auto on = send("A4", kX10On);
  loop.advance(600ms);  // the dim has been acknowledged
  port->unplug();
  EXPECT_NE(finish(dim, 0ms), 0);
  EXPECT_EQ(last_trouble(), "STATUS: A3 Dim may not have been sent, the interface was unplugged");
  EXPECT_EQ(finish(on, 7s), kWaiting);
  EXPECT_NE(finish(on, 2s), 0);
  loop.run_pending();
  EXPECT_EQ(last_trouble(), "STATUS: A4 On could not be sent, the interface is unplugged");

  port->plug(3);
  loop.advance(2s);
  const auto off = send("A4", kX10Off);
  loop.advance(600ms);
  port->unplug();
  loop.advance(3s);
  port->plug(3);
  EXPECT_EQ(finish(off, 5s), 0) << "off may go out twice";
}

// Catches: closing that leaves somebody waiting for ever.
TEST_F(DriverTest, ClosingEndsWhatWaits) {
  port->add_silent_port(8);
  driver->PortNumber(8);
  const auto opening = start(driver->OpenInterface());
  loop.advance(500ms);
  operations.start(close_interface(*driver));
  EXPECT_NE(finish(opening, 0ms), 0);

  driver->PortNumber(3);
  open();
  const auto command = send("A3", kX10On);
  loop.advance(100ms);
  operations.start(close_interface(*driver));
  EXPECT_NE(finish(command, 0ms), 0);
  EXPECT_EQ(last_trouble(), "STATUS: A3 On could not be sent, the interface was closed");
  EXPECT_FALSE(port->is_open());
  loop.advance(1min);
  open();
  EXPECT_EQ(finish(send("A3", kX10On)), 0);
}

// Catches: a resumed operation that has been destroyed, or one that outlives its driver.
TEST_F(DriverTest, AnythingMayBeDestroyedWhileItWaits) {
  open();
  for (int i = 0; i < 120; ++i) {
    auto caller = std::make_unique<Operations>([](std::exception_ptr) {});
    const auto gone = std::make_shared<int>(kWaiting);
    caller->start(keep_result(driver->SendX10("A", "1", kX10Bright, 5, 20, 50), gone));
    const auto stays = send("A2", kX10On);
    loop.advance(std::chrono::milliseconds(i * 13));
    const bool was_done = *gone != kWaiting;
    caller.reset();
    EXPECT_EQ(finish(stays), 0);
    EXPECT_EQ(*gone != kWaiting, was_done);
  }
  send("A2", kX10On);
  auto caller = std::make_unique<Operations>([](std::exception_ptr) {});
  caller->start(
      keep_result(driver->SendX10("A", "9", kX10On, 0, 20, 50), std::make_shared<int>(kWaiting)));
  caller.reset();
  EXPECT_EQ(finish(send("A2", kX10Off)), 0);
  EXPECT_EQ(module("A9"), "off") << "nobody wants it any more";

  send("A3", kX10On);
  const auto opening = start(driver->OpenInterface());
  loop.advance(10ms);
  driver.reset();
  loop.advance(1min);
  EXPECT_EQ(*opening, kWaiting);
}

// Catches: a trace that leaves out a direction.
TEST_F(DriverTest, TracesBothDirections) {
  std::string trace;
  driver->set_trace([&](char direction, std::string_view bytes) {
    trace += direction;
    trace += bytes;
  });
  open();
  driver->ClientName("Homewarden");
  EXPECT_TRUE(trace.starts_with(">\x8B<"));
  EXPECT_TRUE(trace.ends_with("#Homewarden on COM3"));
}

}  // namespace homewarden::testing
