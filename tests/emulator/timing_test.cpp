#include <gtest/gtest.h>

#include "tests/emulator/serial_port.h"

namespace homewarden::emulator {
namespace {

using std::chrono::milliseconds;

Options mains(int hertz, double speed = 1) {
  Options options;
  options.mains_hertz = hertz;
  options.speed = speed;
  return options;
}

// Milliseconds from the first byte sent to the last ready.
int time_of(SerialPort& port, const std::vector<std::pair<std::string, std::string>>& handshakes) {
  const auto start = port.now;
  for (const auto& [bytes, checksum] : handshakes)
    EXPECT_TRUE(port.transmit(bytes, checksum)) << bytes;
  return static_cast<int>((port.now - start).count());
}

// A client's time limits and the measured cost of the driver rest on these lengths.
TEST(Timing, AddressAndFunctionTakeTheirCyclesOfTheMains) {
  struct Case {
    int hertz;
    std::string header_and_code;
    std::string checksum;
    int cycles;
  };
  for (const auto& [hertz, bytes, checksum, cycles] : {
           Case{60, "06 62", "68", 47},
           Case{50, "06 62", "68", 47},
           Case{60, "B6 64", "1A", 25 + 11 * 22},
           Case{50, "B6 64", "1A", 25 + 11 * 22},
           Case{60, "0E 64", "72", 25 + 11 * 2},
           Case{60, "2E 65", "93", 25 + 11 * 5},
       }) {
    SCOPED_TRACE(bytes + " at " + std::to_string(hertz));
    SerialPort port(mains(hertz));
    const int took = time_of(port, {{"04 66", "6A"}, {bytes, checksum}});
    const int on_the_mains = cycles * 1000 / hertz;
    EXPECT_NEAR(static_cast<double>(port.house.mains_time().count()), on_the_mains, 1);
    // Four bytes before the first frame and one after the last; the rest is hidden by quiet cycles.
    EXPECT_NEAR(took, on_the_mains + 11, 3);
  }
}

TEST(Timing, ReadyComesAfterEachFrameAndCommandsKeepQuietCyclesApart) {
  SerialPort port(mains(50));
  const int address = time_of(port, {{"04 66", "6A"}});
  EXPECT_NEAR(address, 440 + 11, 3);
  EXPECT_TRUE(port.transmit("06 62", "68"));
  EXPECT_TRUE(port.transmit("04 66", "6A"));
  EXPECT_TRUE(port.transmit("06 63", "69"));
  EXPECT_EQ(port.house.mains_time(), milliseconds((4 * 22 + 3 * 3) * 20));
  const auto& frames = port.house.frames();
  for (std::size_t i = 1; i < frames.size(); ++i)
    EXPECT_EQ(frames[i].start - frames[i - 1].end, milliseconds(60));

  port.wait(5000);
  EXPECT_TRUE(port.transmit("04 66", "6A"));
  EXPECT_EQ(port.house.mains_time(), milliseconds((5 * 22 + 3 * 3) * 20))
      << "after a long pause nobody waits for quiet cycles";
}

TEST(Timing, SpeedShrinksTheLinesAndNotTheAccount) {
  SerialPort port(mains(60, 10));
  const int took = time_of(port, {{"04 66", "6A"}, {"06 62", "68"}});
  EXPECT_NEAR(took, 79, 5);
  EXPECT_EQ(port.house.mains_time(), milliseconds(783));

  SerialPort at_once(mains(60, 0));
  EXPECT_EQ(time_of(at_once, {{"04 66", "6A"}, {"06 62", "68"}}), 0);
  EXPECT_EQ(at_once.house.mains_time(), milliseconds(783));
}

TEST(Timing, NothingIsDueWhileNothingHappens) {
  SerialPort port;
  EXPECT_EQ(port.house.next_due(), std::nullopt);
  EXPECT_TRUE(port.transmit("04 66", "6A"));
  EXPECT_EQ(port.house.next_due(), std::nullopt) << "a host would wake for nothing";
}

}  // namespace
}  // namespace homewarden::emulator
