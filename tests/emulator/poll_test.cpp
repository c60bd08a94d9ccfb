#include <gtest/gtest.h>

#include "tests/emulator/serial_port.h"

namespace homewarden::emulator {
namespace {

TEST(Poll, RepeatsEachSecondUntilAnsweredAndNotAfter) {
  SerialPort port;
  port.console("remote B2 on");
  EXPECT_EQ(port.answer(), "5A");
  port.wait(3050);
  EXPECT_EQ(port.heard(), "5A 5A 5A");
  EXPECT_EQ(port.ask("C3"), "03");
  port.wait(5000);
  EXPECT_EQ(port.heard(), "02 EE E2");
  EXPECT_FALSE(port.house.wants_computer());
}

// Count, mask and data of every kind of entry: a slip here and the client reads units as functions.
TEST(Poll, UploadLayout) {
  struct Case {
    std::vector<std::string> keys;
    std::string upload;
  };
  for (const auto& [keys, upload] : {
           Case{{"B6", "B7", "B bright 9"}, "05 04 E9 E5 E5 56"},
           Case{{"A3 off"}, "03 02 62 63"},
           Case{{"A3 dim 22"}, "04 02 62 64 D2"},
           Case{{"A3 dim 1", "A off"}, "05 0A 62 64 0A 63"},
           Case{{"P16"}, "02 00 CC"},
           Case{{"P all-units-off"}, "02 01 C0"},
           Case{{"A all-lights-on", "A all-lights-off"}, "03 03 61 66"},
           Case{{"A3 extended 3F 31"}, "05 02 62 67 3F 31"},
       }) {
    SCOPED_TRACE(upload);
    SerialPort port(instant());
    for (const auto& key : keys) ASSERT_EQ(port.console("remote " + key), "");
    EXPECT_EQ(port.heard(), "5A");
    EXPECT_EQ(port.ask("C3"), upload);
    ASSERT_EQ(port.house.uploads().size(), 1U);
    EXPECT_FALSE(port.house.uploads().front().damaged);
  }
}

// The units that a client remembers between uploads matter only if an interface parts them.
TEST(Poll, AnUploadMayEndBetweenAddressAndFunction) {
  SerialPort port;
  port.console("remote B2 on");
  EXPECT_EQ(port.answer(), "5A");
  port.send("C3");
  port.wait(20);
  EXPECT_EQ(port.heard(), "02 00 EE");
  EXPECT_EQ(port.answer(), "5A");
  port.send("C3");
  port.wait(20);
  EXPECT_EQ(port.heard(), "02 01 E2");
  EXPECT_EQ(port.state("B2"), "on 100 %");
}

TEST(Poll, TheBufferKeepsEightBytesAndLosesWhatComesAfter) {
  SerialPort port(instant());
  for (int unit = 1; unit <= 7; ++unit) port.console("remote A" + std::to_string(unit));
  port.console("remote A dim 5");
  port.console("remote A8");
  port.console("remote A9");
  EXPECT_EQ(port.heard(), "5A");
  EXPECT_EQ(port.ask("C3"), "09 00 66 6E 62 6A 61 69 65 6D")
      << "a function never comes without its amount";
  port.console("remote A dim 5");
  EXPECT_EQ(port.heard(), "5A");
  EXPECT_EQ(port.ask("C3"), "03 01 64 30");
}

// A client that is told of its own commands would act on them as if somebody else had sent them.
TEST(Poll, OwnCommandsAreNotUploaded) {
  SerialPort port(instant());
  EXPECT_TRUE(port.transmit("04 66", "6A"));
  EXPECT_TRUE(port.transmit("06 62", "68"));
  port.wait(3000);
  EXPECT_EQ(port.heard(), "");
}

TEST(Poll, WhileItPollsItListensForTheAnswerAlone) {
  SerialPort port;
  port.console("remote B2");
  EXPECT_EQ(port.answer(), "5A");
  port.send("04 66 00 8B");
  port.wait(900);
  EXPECT_EQ(port.heard(), "");
  EXPECT_EQ(port.house.frames().size(), 1U);
  port.send("C3");
  port.wait(20);
  EXPECT_EQ(port.heard(), "02 00 EE");
  EXPECT_TRUE(port.transmit("04 66", "6A"));
}

// If the interface transmitted a function after a remote's address, no client could keep it from
// the remote's unit.
TEST(Poll, ARemoteOnTheLineEndsAHandshakeThatIsNotAcknowledged) {
  SerialPort port;
  EXPECT_TRUE(port.transmit("04 66", "6A"));
  EXPECT_EQ(port.ask("06 62"), "68");
  port.console("remote A5");
  port.send("00");
  EXPECT_EQ(port.answer(), "5A");
  EXPECT_EQ(port.state("A5"), "off");
  port.send("C3");
  port.wait(20);
  EXPECT_EQ(port.heard(), "02 00 61");
  EXPECT_TRUE(port.transmit("04 66", "6A"));
  EXPECT_TRUE(port.transmit("06 62", "68"));
  EXPECT_EQ(port.state("A1"), "on 100 %");
}

// Back-to-back commands must not starve the remote, and the remote must not cut into one.
TEST(Poll, ARemoteWaitsForTheLineAndIsNext) {
  SerialPort port;
  EXPECT_EQ(port.ask("04 66"), "6A");
  port.send("00");
  port.wait(100);
  port.console("remote B2 on");
  EXPECT_EQ(port.answer(), "55");
  port.send("06 62");
  EXPECT_EQ(port.answer(), "5A");
  const auto& frames = port.house.frames();
  ASSERT_EQ(frames.size(), 2U);
  EXPECT_FALSE(frames[0].from_remote);
  EXPECT_TRUE(frames[1].from_remote);
  EXPECT_GE(frames[1].start, frames[0].end + SerialPort::Milliseconds(50));
}

}  // namespace
}  // namespace homewarden::emulator
