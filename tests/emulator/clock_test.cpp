#include <gtest/gtest.h>

#include "tests/emulator/serial_port.h"

namespace homewarden::emulator {
namespace {

// Saturday, 31 December, 23:59:50, house A: day 364 is 16C, its ninth bit goes with the weekday.
constexpr const char* kNewYearsEve = "9B 32 77 0B 6C C0 60";

TEST(Clock, AsksEachSecondAndAnswersNothingElseUntilItIsSet) {
  SerialPort port;
  port.console("clock-request");
  port.wait(3100);
  EXPECT_EQ(port.heard(), "A5 A5 A5 A5");
  port.send("04 66 00 8B C3");
  port.wait(800);
  EXPECT_EQ(port.heard(), "");
  port.console("remote B2");
  port.wait(1000);
  EXPECT_EQ(port.heard(), "A5") << "polls wait for the clock too";

  EXPECT_EQ(port.ask(kNewYearsEve), "40") << "the header is not in the sum";
  EXPECT_EQ(port.ask("00"), "55");
  EXPECT_EQ(port.answer(), "5A");
  port.send("C3");
  port.wait(3000);
  EXPECT_EQ(port.heard(), "02 00 EE");
}

TEST(Clock, AWrongAcknowledgeLeavesItUnset) {
  SerialPort port(instant());
  port.console("clock-request");
  port.heard();
  EXPECT_EQ(port.ask("9B 00 00 00 00 01 60"), "61");
  EXPECT_EQ(port.ask(kNewYearsEve), "40");
  port.send("01");
  EXPECT_EQ(port.answer(), "A5");
  EXPECT_EQ(port.ask(kNewYearsEve), "40");
  EXPECT_EQ(port.ask("00"), "55");
  port.wait(2000);
  EXPECT_EQ(port.heard(), "");
}

// The clock runs on from what was set: past midnight, the weekday and the year's end.
TEST(Clock, StatusTellsTheTime) {
  SerialPort port(instant());
  EXPECT_EQ(port.ask(kNewYearsEve), "40");
  EXPECT_EQ(port.ask("00"), "55");
  EXPECT_EQ(port.ask("8B"), "00 00 32 77 0B 6C C0 68 00 00 00 00 00 00");
  port.wait(9999);
  EXPECT_EQ(port.ask("8B").substr(6, 14), "3B 77 0B 6C C0");
  port.wait(1);
  EXPECT_EQ(port.ask("8B").substr(6, 14), "00 00 00 6D 81");
  port.wait(3600 * 1000 + 61 * 1000);
  EXPECT_EQ(port.ask("8B").substr(6, 14), "01 3D 00 6D 81") << "minutes run to 119";
}

TEST(Clock, StatusTellsWhatTheMonitoredHouseWasSeenToDo) {
  SerialPort port(instant());
  const auto units = [&port] { return port.ask("8B").substr(24); };
  EXPECT_TRUE(port.transmit("04 66", "6A"));
  EXPECT_EQ(units(), "40 00 00 00 00 00");
  port.console("remote A3 dim 5");
  port.heard();
  port.ask("C3");
  EXPECT_EQ(units(), "44 00 44 00 44 00");
  port.console("remote A2 off");
  port.console("remote B1 on");
  port.heard();
  port.ask("C3");
  EXPECT_EQ(units(), "00 40 44 00 44 00") << "low byte first; house B is not monitored";
  EXPECT_EQ(port.ask("9B 00 00 00 00 01 61"), "62");
  EXPECT_EQ(port.ask("00"), "55");
  EXPECT_EQ(units(), "00 00 00 00 00 00");
  EXPECT_TRUE(port.house.frames().size() == 7U) << "nothing of this goes out on the power line";
}

}  // namespace
}  // namespace homewarden::emulator
