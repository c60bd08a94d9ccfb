#include "tests/emulator/serial_port.h"

namespace homewarden::emulator {
namespace {

using std::chrono::milliseconds;

// Milliseconds from the first byte sent to ready.
double time_of(SerialPort& port, const std::string& bytes) {
  const auto start = port.now;
  for (const auto& part : {bytes, std::string("00")}) {
    port.send(part);
    while (port.heard().empty()) port.wait(1);
  }
  return static_cast<double>((port.now - start).count());
}

// A client's time limits and the measured cost of the driver rest on these lengths.
TEST(Timing, AddressAndFunctionTakeTheirCyclesOfTheMains) {
  struct Case {
    int hertz;
    const char* function;
    int cycles;
  };
  for (const auto& [hertz, function, cycles] : {Case{60, "06 62", 47},
                                                {50, "06 62", 47},
                                                {50, "B6 64", 25 + 11 * 22},
                                                {60, "0E 64", 25 + 11 * 2},
                                                {60, "2E 65", 25 + 11 * 5}}) {
    SCOPED_TRACE(function);
    for (const double speed : {1.0, 10.0}) {
      Options options;
      options.mains_hertz = hertz;
      options.speed = speed;
      SerialPort port(options);
      const double took = time_of(port, "04 66") + time_of(port, function);
      const double on_the_mains = cycles * 1000.0 / hertz;
      EXPECT_NEAR(static_cast<double>(port.house.mains_time().count()), on_the_mains, 1);
      // Four bytes before the first frame and one after the last; the rest is hidden by quiet
      // cycles. Speed shrinks the lines and not the account.
      EXPECT_NEAR(took, (on_the_mains + 11) / speed, 5);
    }
  }
}

TEST(Timing, ReadyComesAfterEachFrameAndCommandsKeepQuietCyclesApart) {
  Options options;
  options.mains_hertz = 50;
  SerialPort port(options);
  EXPECT_EQ(port.house.next_due(), std::nullopt) << "a host would wake for nothing";
  EXPECT_NEAR(time_of(port, "04 66"), 440 + 11, 3);
  for (const char* const bytes : {"06 62", "04 66", "06 63"}) time_of(port, bytes);
  EXPECT_EQ(port.house.mains_time(), milliseconds((4 * 22 + 3 * 3) * 20));
  const auto& frames = port.house.frames();
  for (std::size_t i = 1; i < frames.size(); ++i)
    EXPECT_EQ(frames[i].start - frames[i - 1].end, milliseconds(60));
  port.wait(5000);
  EXPECT_EQ(port.house.next_due(), std::nullopt);
  time_of(port, "04 66");
  EXPECT_EQ(port.house.mains_time(), milliseconds((5 * 22 + 3 * 3) * 20))
      << "after a long pause nobody waits for quiet cycles";
}

}  // namespace
}  // namespace homewarden::emulator
