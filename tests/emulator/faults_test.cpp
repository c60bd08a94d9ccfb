#include <gtest/gtest.h>

#include <bit>
#include <functional>

#include "tests/emulator/serial_port.h"

namespace homewarden::emulator {
namespace {

// Once the fault is over, the interface is as good as new.
void expect_sound(SerialPort& port) {
  port.wait(15000);
  while (port.house.wants_computer()) {
    port.ask("9B 00 00 00 00 01 60");
    port.ask("00");
    port.ask("C3");
    port.wait(50);
  }
  port.heard();
  EXPECT_TRUE(port.transmit("04 6C", "70"));
  EXPECT_TRUE(port.transmit("06 62", "68"));
  EXPECT_EQ(port.state("A16"), "on 100 %");
}

// The test of a driver proves nothing if a fault is not what its name says.
TEST(Faults, OnTheSerialLine) {
  struct Case {
    Fault fault;
    std::function<void(SerialPort&)> seen;
  };
  for (const auto& [fault, seen] : {
           Case{Fault::kWrongChecksum,
                [](SerialPort& port) { EXPECT_NE(port.ask("04 66"), "6A"); }},
           Case{Fault::kLostByteToComputer,
                [](SerialPort& port) {
                  EXPECT_EQ(port.ask("04 66", 100), "");
                  EXPECT_EQ(port.ask("00"), "55") << "the interface knows nothing of it";
                }},
           Case{Fault::kLostByteFromComputer,
                [](SerialPort& port) { EXPECT_EQ(port.ask("04 66", 100), ""); }},
           Case{Fault::kDoubledByte,
                [](SerialPort& port) { EXPECT_EQ(port.ask("04 66"), "6A 6A"); }},
           Case{Fault::kChangedByte,
                [](SerialPort& port) {
                  const std::string answer = port.ask("04 66");
                  const int change = std::stoi(answer, nullptr, 16) ^ 0x6A;
                  EXPECT_EQ(std::popcount(static_cast<unsigned>(change)), 1) << answer;
                }},
           Case{Fault::kChangedByteFromComputer,
                [](SerialPort& port) { EXPECT_NE(port.ask("04 66", 100), "6A"); }},
           Case{Fault::kNoise,
                [](SerialPort& port) {
                  const std::string answer = port.ask("04 66");
                  EXPECT_EQ(answer.size(), 5U) << answer;
                  EXPECT_EQ(answer.substr(3), "6A");
                }},
       }) {
    SCOPED_TRACE(to_text(fault));
    SerialPort port(instant());
    port.house.faults().inject(fault);
    seen(port);
    EXPECT_EQ(port.house.faults().happened(fault), 1);
    EXPECT_EQ(port.house.faults().pending(fault), 0);
    expect_sound(port);
  }
}

TEST(Faults, PollInsteadOfTheChecksumOrRightAfterIt) {
  for (const bool after : {false, true}) {
    SCOPED_TRACE(after);
    SerialPort port(instant());
    port.house.faults().inject(after ? Fault::kPollAfterChecksum : Fault::kPollBeforeChecksum);
    EXPECT_EQ(port.ask("06 62"), after ? "68 5A" : "5A");
    port.send("00");
    ASSERT_FALSE(port.house.frames().empty());
    for (const auto& frame : port.house.frames()) {
      EXPECT_TRUE(frame.from_remote) << "the transmission is lost";
      EXPECT_EQ(frame.what.house, 0);
    }
    EXPECT_GE(port.ask("C3").size(), 8U);
    expect_sound(port);
  }
}

// The remote must come after the address is out and before the function can be.
TEST(Faults, PollBetweenAddressAndFunction) {
  SerialPort port;
  port.house.faults().inject(Fault::kPollBeforeFunction, 3);
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(port.transmit("04 EE", "F2"));
    EXPECT_EQ(port.ask("06 E2"), "5A");
    EXPECT_TRUE(port.house.frames().back().from_remote);
    EXPECT_EQ(port.house.frames().back().what.house, 1);
    port.send("C3");
    port.wait(10000);
    port.heard();
    port.send("C3");
    port.wait(50);
    port.heard();
  }
  for (const auto& frame : port.house.frames())
    EXPECT_TRUE(frame.from_remote || !frame.what.function);
  expect_sound(port);
}

TEST(Faults, PowerFailsInTheMiddle) {
  SerialPort port;
  EXPECT_TRUE(port.transmit("04 66", "6A"));
  port.house.faults().inject(Fault::kClockRequest);
  EXPECT_EQ(port.ask("06 62"), "A5");
  EXPECT_EQ(port.ask("00"), "A5");
  EXPECT_EQ(port.state("A1"), "off");
  expect_sound(port);
}

TEST(Faults, ReadyLateOrNever) {
  struct Case {
    Fault fault;
    int not_before;  // milliseconds
    std::string answer;
    bool transmitted;
  };
  for (const auto& [fault, not_before, answer, transmitted] : {
           Case{Fault::kLateReady, 2300, "55", true},
           Case{Fault::kVeryLateReady, 12300, "55", true},
           Case{Fault::kMissingReady, 20000, "", true},
           Case{Fault::kCollision, 20000, "", false},
       }) {
    SCOPED_TRACE(to_text(fault));
    SerialPort port;
    EXPECT_TRUE(port.transmit("04 66", "6A"));
    EXPECT_EQ(port.ask("06 62"), "68");
    port.house.faults().inject(fault);
    EXPECT_EQ(port.ask("00", not_before), "");
    EXPECT_EQ(port.state("A1"), transmitted ? "on 100 %" : "off");
    EXPECT_EQ(port.answer(1000), answer);
    expect_sound(port);
  }
}

TEST(Faults, OverlookedPollAnswer) {
  SerialPort port(instant());
  port.house.faults().inject(Fault::kLostPollAnswer);
  port.console("remote B2 on");
  EXPECT_EQ(port.heard(), "5A");
  EXPECT_EQ(port.ask("C3"), "5A");
  EXPECT_EQ(port.ask("C3"), "03 02 EE E2") << "nothing of the data is lost";
  expect_sound(port);
}

TEST(Faults, ClockTakenWithoutAnswer) {
  SerialPort port;
  port.house.fail_power(port.now);
  port.house.faults().inject(Fault::kNoClockChecksum);
  EXPECT_EQ(port.answer(), "A5");
  EXPECT_EQ(port.ask("9B 00 00 00 00 01 60", 3000), "");
  EXPECT_FALSE(port.house.wants_computer());
  expect_sound(port);
}

TEST(Faults, MacroNoticeFollowsReady) {
  SerialPort port(instant());
  port.house.faults().inject(Fault::kMacroNotice);
  EXPECT_EQ(port.ask("04 66"), "6A");
  const std::string answer = port.ask("00");
  EXPECT_TRUE(answer.starts_with("55 5B ")) << answer;
  EXPECT_EQ(answer.size(), 11U) << "two bytes follow the notice";
  expect_sound(port);
}

// Who counts what the computer was told must know which uploads it cannot have understood.
TEST(Faults, SpoiltUploadsAreMarked) {
  for (const Fault fault :
       {Fault::kLostByteToComputer, Fault::kDoubledByte, Fault::kChangedByte, Fault::kNoise}) {
    SerialPort port(instant());
    port.console("remote B2 on");
    port.house.faults().inject(fault);
    EXPECT_NE(port.ask("C3"), "03 02 EE E2");
    ASSERT_EQ(port.house.uploads().size(), 1U);
    EXPECT_TRUE(port.house.uploads().front().damaged);
    EXPECT_EQ(port.house.uploads().front().bytes, "\x03\x02\xEE\xE2");
  }
}

// A ready that nobody sent would let a sound client believe in a command that never went out.
TEST(Faults, NoiseIsNeverReady) {
  SerialPort port(instant());
  port.console("fault noise 1.0");
  for (int i = 0; i < 200; ++i) EXPECT_EQ(port.ask("8B").find("55"), std::string::npos);
  EXPECT_EQ(port.house.faults().happened(Fault::kNoise), 200 * 14);
}

// What a client without any sense does must never wedge the interface, whatever goes wrong.
TEST(Faults, AllAtRandomLeaveNothingStuckAndRepeatWithTheSeed) {
  const auto run = [](std::uint32_t seed) {
    Options options;
    options.seed = seed;
    SerialPort port(options);
    port.console("fault all 0.05");
    std::string course;
    for (int i = 0; i < 300; ++i) {
      if (i % 2 == 0) port.console("remote C3 on");
      for (const char* const bytes :
           {"04 66", "00", "06 62", "00", "C3", "9B 00 00 00 00 01 60", "00"}) {
        port.send(bytes);
        port.wait(700);
        course += port.heard() + "|";
      }
    }
    for (int i = 0; i < kFaultCount; ++i)
      EXPECT_GT(port.house.faults().happened(fault_at(i)), 0) << to_text(fault_at(i));
    port.console("fault off");
    expect_sound(port);
    return course;
  };
  const std::string first = run(7);
  EXPECT_EQ(first, run(7));
  EXPECT_NE(first, run(8));
}

}  // namespace
}  // namespace homewarden::emulator
