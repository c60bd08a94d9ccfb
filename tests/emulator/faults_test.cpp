// The test of a driver proves nothing if a fault is not what its name says.

#include "tests/emulator/serial_port.h"

namespace homewarden::emulator {
namespace {

// Once the fault is over, the interface is as good as new.
void expect_sound(SerialPort& port) {
  port.wait(15000);
  while (port.house.wants_computer()) {
    for (const char* const bytes : {"9B 00 00 00 00 01 60", "00", "C3"}) port.ask(bytes);
    port.wait(50);
  }
  port.play("wait 0 | 04 6C -> 70 | 00 -> 55 | 06 62 -> 68 | 00 -> 55 | A16 on 100 %");
}

struct Case {
  const char* fault;
  const char* seen;
};

TEST(Faults, AreWhatTheirNamesSay) {
  for (const auto& [fault, seen] : {
           Case{"wrong-checksum", "04 66 -> not 6A"},
           {"lost-byte", "04 66 | wait 100 -> | 00 -> 55"},
           {"lost-byte-from-computer", "04 66 ->"},
           {"doubled-byte", "04 66 -> 6A 6A"},
           {"changed-byte", "04 66 -> not 6A"},
           {"changed-byte-from-computer", "04 66 -> not 6A"},
           {"noise", "04 66 -> ?? 6A"},
           {"poll-before-checksum", "06 62 -> 5A | 00 | A1 off | C3 -> 03 02 6? 62"},
           {"poll-after-checksum", "06 62 -> 68 5A | 00 | A1 off | C3 -> 03 02 6? 62"},
           {"lost-poll-answer", "remote B2 on | -> 5A | C3 -> 5A | C3 -> 03 02 EE E2"},
           {"macro-notice", "04 66 -> 6A | 00 -> 55 5B ?? ??"},
       }) {
    SCOPED_TRACE(fault);
    SerialPort port(instant());
    port.console(std::string("fault ") + fault);
    port.play(seen);
    EXPECT_EQ(port.house.faults().happened(*parse_fault(fault)), 1);
    EXPECT_EQ(port.house.faults().pending(*parse_fault(fault)), 0);
    expect_sound(port);
  }
}

TEST(Faults, OfTimeAndPower) {
  const std::string lamp = "04 66 -> 6A | 00 -> 55 | ";
  for (const std::string& seen :
       {lamp + "06 62 -> 68 | fault late-ready | 00 | wait 2300 -> | A1 on 100 % | -> 55",
        lamp + "06 62 -> 68 | fault very-late-ready | 00 | wait 12300 -> | A1 on 100 % | -> 55",
        lamp + "06 62 -> 68 | fault missing-ready | 00 | wait 20000 -> | A1 on 100 %",
        lamp + "06 62 -> 68 | fault collision | 00 | wait 20000 -> | A1 off",
        // The remote comes after the address is out and before the function can be.
        std::string("fault poll-before-function | 04 EE -> F2 | 00 -> 55 | 06 E2 -> 5A | B2 off |"
                    "C3 -> 02 00 E?"),
        lamp + "fault clock-request | 06 62 -> A5 | 00 -> A5 | A1 off",
        std::string("clock-request | fault no-clock-checksum | -> A5 | 9B 00 00 00 00 01 60 | "
                    "wait 3000 -> | 04 66 -> 6A")}) {
    SCOPED_TRACE(seen);
    SerialPort port;
    port.play(seen);
    expect_sound(port);
  }
}

// Who counts what the computer was told must know which uploads it cannot have understood.
TEST(Faults, SpoiltUploadsAreMarked) {
  for (const char* const fault : {"lost-byte", "doubled-byte", "changed-byte", "noise", "off"}) {
    SerialPort port(instant());
    port.play("remote B2 on | -> 5A | fault " + std::string(fault));
    const bool sound = port.ask("C3") == "03 02 EE E2";
    ASSERT_EQ(port.house.uploads().size(), 1U);
    EXPECT_EQ(port.house.uploads().front().damaged, !sound) << fault;
    EXPECT_EQ(sound, std::string(fault) == "off");
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

}  // namespace
}  // namespace homewarden::emulator
