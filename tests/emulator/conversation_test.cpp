// What the interface says and does, byte for byte. A client written from the published notes alone
// could not use one that differs here, and the driver would be tested against something else.

#include <span>

#include "tests/emulator/serial_port.h"

namespace homewarden::emulator {
namespace {

struct Conversation {
  const char* what;
  const char* steps;
};

// At the speed of the mains and the serial line.
constexpr Conversation kAtItsTime[] = {
    {"the worked examples; nothing happens before the checksum is acknowledged",
     "04 66 -> 6A | 00 -> 55 | A1 off | 06 62 -> 68 | A1 off | 00 -> 55 | A1 on 100 % |"
     "86 64 -> EA | 00 -> 55 | A1 on 27 %"},
    {"while it transmits it hears nothing, and a second try acts twice",
     "04 66 -> 6A | 00 -> 55 | 06 62 -> 68 | 00 -> 55 | 56 64 -> BA | 00 | wait 1000 | 56 64 |"
     "wait 600 -> | -> 55 | 56 64 -> BA | 00 -> 55 | A1 on 9 %"},
    {"an extended transmission keeps its length and modules ignore it",
     "04 66 -> 6A | 00 -> 55 | 06 62 -> 68 | 00 -> 55 | 07 67 06 3F 31 -> E4 | 00 -> 55 |"
     "A1 on 100 % | 06 63 -> 69 | 00 -> 55 | A1 off"},
    {"a poll is repeated each second until it is answered, and not after",
     "remote B2 on | -> 5A | wait 3050 -> 5A 5A 5A | C3 -> 03 02 EE E2 | wait 5000 ->"},
    {"an upload may end between address and function",
     "remote B2 on | -> 5A | C3 | wait 20 -> 02 00 EE | -> 5A | C3 | wait 20 -> 02 01 E2 |"
     "B2 on 100 %"},
    {"while it polls it listens for the answer alone",
     "remote B2 | -> 5A | 04 66 00 8B | wait 900 -> | C3 -> 02 00 EE | 04 66 -> 6A | 00 -> 55"},
    {"a remote on the line ends a handshake that is not acknowledged",
     "04 66 -> 6A | 00 -> 55 | 06 62 -> 68 | remote A5 | 00 -> 5A | A5 off | C3 -> 02 00 61 |"
     "04 66 -> 6A | 00 -> 55 | 06 62 -> 68 | 00 -> 55 | A1 on 100 %"},
    {"back-to-back commands do not starve a remote, which cuts into none",
     "04 66 -> 6A | 00 | wait 100 | remote B2 on | -> 55 | B2 off | 06 62 -> 5A"},
    {"it asks for the clock each second and answers nothing else until it is set",
     "clock-request | wait 3100 -> A5 A5 A5 A5 | 04 66 00 8B C3 | wait 800 -> | remote B2 |"
     "wait 1000 -> A5 | 9B 32 77 0B 6C C0 60 -> 40 | 00 -> 55 5A | C3 | wait 3000 -> 02 00 "
     "EE"},
};

// Everything on the lines happens at once; the house has all modules.
constexpr Conversation kAtOnce[] = {
    {"checksums that are polls, unusual bits of a dim",
     "04 56 -> 5A | 00 -> 55 | 06 52 -> 58 | 00 -> 55 | G1 on 100 % | 0C 56 -> 62 | 00 -> 55 |"
     "04 A6 -> AA | 00 -> 55 | 06 A2 -> A8 | 00 -> 55 | B6 A4 -> 5A | 00 -> 55 | D1 on 0 % |"
     "FE A4 -> A2 | 00 -> 55 | D1 on 0 %"},
    {"a new header instead of the acknowledge starts anew; one acknowledge, one transmission",
     "04 66 -> 6A | 04 6E -> 72 | 00 -> 55 | 00 | wait 5000 -> | 06 62 -> 68 | 00 -> 55 |"
     "A2 on 100 % | A1 off"},
    {"several addresses share a function",
     "04 66 -> 6A | 00 -> 55 | 04 62 -> 66 | 00 -> 55 | 06 62 -> 68 | 00 -> 55 |"
     "A1 on 100 % | A3 on 100 % | A2 off"},
    {"bytes that begin nothing are ignored",
     "00 C3 5A F0 C2 00 00 | wait 1000 -> | 04 66 -> 6A | 00 -> 55"},
    {"the ring line; while the clock is not set it is not answered",
     "EB -> EB | 00 -> 55 | DB -> DB | 00 -> 55 | wait 4000 -> | 04 66 -> 6A | 00 -> 55 |"
     "clock-request | -> A5 | EB | wait 10 ->"},
    {"a wrong acknowledge leaves the clock unset",
     "clock-request | -> A5 | 9B 00 00 00 00 01 60 -> 61 | 9B 32 77 0B 6C C0 60 -> 40 |"
     "01 -> A5 | 9B 32 77 0B 6C C0 60 -> 40 | 00 -> 55 | wait 2000 ->"},
    // Saturday, 31 December, 23:59:50, house A: day 364 is 16C, its ninth bit goes with the
    // weekday.
    {"the clock runs past midnight, the weekday and the year's end; minutes run to 119",
     "9B 32 77 0B 6C C0 60 -> 40 | 00 -> 55 | 8B -> 00 00 32 77 0B 6C C0 68 00 00 00 00 00 00 |"
     "wait 9900 | 8B -> 00 00 3B 77 0B 6C C0 68 00 00 00 00 00 00 |"
     "wait 100 | 8B -> 00 00 00 00 00 6D 81 68 00 00 00 00 00 00 |"
     "wait 3661000 | 8B -> 00 00 01 3D 00 6D 81 68 00 00 00 00 00 00"},
    {"the status tells what the monitored house was seen to do, low byte first",
     "04 66 -> 6A | 00 -> 55 | 8B -> ?? ?? ?? ?? ?? ?? ?? ?? 40 00 00 00 00 00 |"
     "remote A3 dim 5 | -> 5A | C3 -> 04 02 62 64 30 | remote A2 off | remote B1 on | wait 1 |"
     "C3 -> 05 ?? 6E 63 E6 E2 | 8B -> ?? ?? ?? ?? ?? ?? ?? ?? 00 40 44 00 44 00 |"
     "9B 00 00 00 00 01 61 -> 62 | 00 -> 55 | 8B -> ?? ?? ?? ?? ?? ?? ?? ?? 00 00 00 00 00 00"},
    {"own commands are not uploaded: a client would take them for somebody else's",
     "04 66 -> 6A | 00 -> 55 | 06 62 -> 68 | 00 -> 55 | wait 3000 ->"},
    {"the buffer keeps eight bytes; a function never comes without its amount",
     "remote A1 | remote A2 | remote A3 | remote A4 | remote A5 | remote A6 | remote A7 |"
     "remote A dim 5 | remote A8 | remote A9 | wait 0 | C3 -> 09 00 66 6E 62 6A 61 69 65 6D |"
     "remote A dim 5 | -> 5A | C3 -> 03 01 64 30"},
    // Count, mask and data of every kind: a slip and the client reads units as functions.
    {"uploads: units and a function with its amount",
     "remote B6 | remote B7 | remote B bright 9 | -> 5A | C3 -> 05 04 E9 E5 E5 56"},
    {"uploads: address and function", "remote A3 off | -> 5A | C3 -> 03 02 62 63"},
    {"uploads: the largest amount", "remote A3 dim 22 | -> 5A | C3 -> 04 02 62 64 D2"},
    {"uploads: an amount between functions",
     "remote A3 dim 1 | remote A off | -> 5A | C3 -> 05 0A 62 64 0A 63"},
    {"uploads: an address alone", "remote P16 | -> 5A | C3 -> 02 00 CC"},
    {"uploads: functions for a whole house",
     "remote A all-lights-on | remote A all-lights-off | -> 5A | C3 -> 03 03 61 66"},
    {"uploads: extended", "remote A3 extended 3F 31 | -> 5A | C3 -> 05 02 62 67 3F 31"},
    // Programs that reach a level by On, Bright and Dim depend on each of these quirks.
    {"lamps: dark ones do not dim, the first Bright is full, On leaves a lamp that is on alone",
     "remote A1 dim 5 | A1 off | remote A1 bright 1 | A1 on 100 % | remote A1 dim 9 | A1 on 59 % |"
     "remote A1 on | A1 on 59 % | remote A1 bright 3 | A1 on 73 % | remote A1 dim 22 | A1 on 0 % |"
     "remote A1 off | remote A1 on | A1 on 100 %"},
    {"units stay selected until the first address after a function, in each house by itself",
     "remote A1 | remote B1 | remote A2 | remote A on | A1 on 100 % | A2 on 100 % | B1 off |"
     "remote A dim 4 | remote A2 | remote A off | A1 on 82 % | A2 off | remote B on | B1 on 100 %"},
};

// Hall with a lamp A1 and an appliance A2, and a lamp B1.
constexpr Conversation kNamedModules[] = {
    {"appliances switch and do nothing else",
     "remote A2 bright 5 | remote A all-lights-on | A2 off | remote A2 on | remote A2 dim 22 |"
     "remote A all-lights-off | A2 on | remote A2 off | A2 off"},
    {"functions for a whole house stay in it",
     "remote A all-lights-on | A1 on 100 % | B1 off | remote A2 on | remote B1 on |"
     "remote A all-units-off | A1 off | A2 off | B1 on 100 %"},
    {"a house with named modules has no others", "remote A9 on | A9 no module"},
};

void play(std::span<const Conversation> conversations, const Options& options) {
  for (const auto& [what, steps] : conversations) {
    SCOPED_TRACE(what);
    SerialPort(options).play(steps);
  }
}

TEST(Conversations, AtTheSpeedOfTheMains) {
  play(kAtItsTime, Options());
}

TEST(Conversations, AtOnce) {
  play(kAtOnce, instant());
}

TEST(Conversations, WithNamedModules) {
  Options options = instant();
  options.modules = {{{0, 1}, ModuleType::kLamp, ""},
                     {{0, 2}, ModuleType::kAppliance, ""},
                     {{1, 1}, ModuleType::kLamp, ""}};
  play(kNamedModules, options);
}

// Catches: bytes of a block that go out on the power line; a sum with its header in it, or one that
// nobody checks; the address read from the wrong end; a block over another one.
TEST(Conversations, MemoryIsKeptAndShown) {
  SerialPort port;
  EXPECT_EQ(port.console("memory"), "nothing has been written to the memory");
  const std::string data = " 04 66 00 06 62 00 FB 9B 8B C3 EB 00 00 00 00";
  port.play("FB 00 00 03" + data +
            " -> A4 | 00 | wait 100 -> | wait 100 -> 55 |"
            "FB 00 10 04" +
            data + " -> B5 | 00 -> 55 | FB 20 03 05" + data +
            " -> C9 | 00 -> 55 |"
            "FB 00 10 06" +
            data +
            " -> B7 | 01 | wait 4000 -> |"
            "FB 08 00 07" +
            data + " -> B0 | 00 -> 55 | 04 66 -> 6A | 00 -> 55");
  EXPECT_EQ(port.house.frames().size(), 1U);
  const std::string blank = " FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF";
  EXPECT_EQ(port.console("memory"), "000: 03" + data + "\n010: 04" + data + "\n020:" + blank +
                                        "\n*\n320: 05" + data + "\n330:" + blank + "\n*");
}

TEST(Conversations, WhatIsNeverFinishedIsForgotten) {
  for (const char* const begun : {"04", "04 66", "05 67 20", "9B 00 00", "FB 00 00 66", "EB"}) {
    SCOPED_TRACE(begun);
    SerialPort port(instant());
    port.play(std::string(begun) + "| wait 4000 | 00 | wait 10 | " + begun +
              " | remote B2 on | wait 4000");
    ASSERT_EQ(port.house.frames().size(), 2U) << "too late to acknowledge";
    port.play("C3 -> 03 02 EE E2 | 04 66 -> 6A | 00 -> 55");
  }
}

}  // namespace
}  // namespace homewarden::emulator
