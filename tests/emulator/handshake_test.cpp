#include <gtest/gtest.h>

#include <array>

#include "tests/emulator/serial_port.h"

namespace homewarden::emulator {
namespace {

// A client written from the published notes alone could not use an interface that differs here.
TEST(Handshake, WorkedExamplesByteForByte) {
  SerialPort port;
  EXPECT_EQ(port.ask("04 66"), "6A");
  EXPECT_EQ(port.ask("00"), "55");
  EXPECT_EQ(port.state("A1"), "off");
  EXPECT_EQ(port.ask("06 62"), "68");
  EXPECT_EQ(port.state("A1"), "off") << "nothing happens before the checksum is acknowledged";
  EXPECT_EQ(port.ask("00"), "55");
  EXPECT_EQ(port.state("A1"), "on 100 %");
  EXPECT_EQ(port.ask("86 64"), "EA");
  EXPECT_EQ(port.ask("00"), "55");
  EXPECT_EQ(port.state("A1"), "on 27 %");
}

// The checksum that looks like a poll, and the two ways round it that programs know.
TEST(Handshake, ChecksumsThatArePollsAndUnusualDimBits) {
  SerialPort port(instant());
  EXPECT_TRUE(port.transmit("04 56", "5A"));
  EXPECT_TRUE(port.transmit("06 52", "58"));
  EXPECT_EQ(port.state("G1"), "on 100 %");
  EXPECT_TRUE(port.transmit("0C 56", "62"));
  EXPECT_EQ(port.house.frames().back().what.steps, 0) << "an address has no amount";

  EXPECT_TRUE(port.transmit("04 A6", "AA"));  // D1
  EXPECT_TRUE(port.transmit("06 A2", "A8"));
  EXPECT_TRUE(port.transmit("B6 A4", "5A"));
  EXPECT_EQ(port.state("D1"), "on 0 %");
  EXPECT_TRUE(port.transmit("BE A4", "62"));
  EXPECT_TRUE(port.transmit("FE A4", "A2"));
  EXPECT_EQ(port.house.frames().back().what.steps, 31);
  EXPECT_EQ(port.state("D1"), "on 0 %");
}

// A wrong entry in the table of codes would switch a neighbour's lamp.
TEST(Handshake, EveryAddressReachesItsOwnModule) {
  constexpr std::array kLine = {0x6, 0xE, 0x2, 0xA, 0x1, 0x9, 0x5, 0xD,
                                0x7, 0xF, 0x3, 0xB, 0x0, 0x8, 0x4, 0xC};
  Emulator house(instant());
  for (std::size_t i = 0; i < 256; ++i) {
    const int code = kLine[i / 16] << 4;
    const std::string address{'\x04', static_cast<char>(code | kLine[i % 16])};
    const std::string off{'\x06', static_cast<char>(code | 2)};
    for (const auto& bytes : {address, off}) {
      house.receive(bytes, std::chrono::milliseconds(0));
      house.receive(std::string(1, '\0'), std::chrono::milliseconds(0));
    }
    ASSERT_EQ(house.frames().size(), 2 * i + 2);
    const cm11::Address expected{static_cast<int>(i / 16), static_cast<int>(i % 16) + 1};
    EXPECT_EQ(house.frames().back().modules, std::vector{expected});
  }
}

// A retry that the interface takes for an acknowledge would send what the computer gave up.
TEST(Handshake, NewHeaderInsteadOfAcknowledgeStartsAnew) {
  SerialPort port(instant());
  EXPECT_EQ(port.ask("04 66"), "6A");
  EXPECT_EQ(port.ask("04 6E"), "72");
  EXPECT_EQ(port.ask("00"), "55");
  ASSERT_EQ(port.house.frames().size(), 1U);
  EXPECT_EQ(port.house.frames().front().what.code, 2);
  port.send("00");
  port.wait(5000);
  EXPECT_EQ(port.house.frames().size(), 1U) << "one acknowledge, one transmission";
}

TEST(Handshake, NeverAcknowledgedOrNeverFinishedIsForgotten) {
  for (const char* const begun : {"04", "04 66", "05 67 20", "9B 00 00"}) {
    SCOPED_TRACE(begun);
    SerialPort port(instant());
    port.send(begun);
    port.heard();
    port.wait(4000);
    port.send("00");
    port.wait(10);
    EXPECT_TRUE(port.house.frames().empty()) << "too late to acknowledge";
    port.send(begun);
    port.heard();
    port.console("remote B2 on");
    port.wait(4000);
    EXPECT_TRUE(port.heard().starts_with("5A")) << "polls all the same";
    EXPECT_EQ(port.ask("C3"), "03 02 EE E2");
    EXPECT_TRUE(port.transmit("04 66", "6A"));
  }
}

TEST(Handshake, BytesThatBeginNothingAreIgnored) {
  SerialPort port(instant());
  port.send("00 C3 5A F0 C2 00 00");
  port.wait(1000);
  EXPECT_EQ(port.heard(), "");
  EXPECT_TRUE(port.transmit("04 66", "6A"));
}

// Only the sum of all five bytes and a transmission of its own length keep the client in step.
TEST(Handshake, ExtendedTransmissionIsTakenAndModulesIgnoreIt) {
  SerialPort port;
  EXPECT_TRUE(port.transmit("04 66", "6A"));
  EXPECT_TRUE(port.transmit("06 62", "68"));
  EXPECT_EQ(port.ask("07 67 06 3F 31"), "E4");
  EXPECT_EQ(port.ask("00"), "55");
  EXPECT_EQ(port.state("A1"), "on 100 %");
  EXPECT_EQ(port.house.take_reports().back(), "A Extended Code: no module knows it");
  EXPECT_TRUE(port.transmit("06 63", "69"));
  EXPECT_EQ(port.state("A1"), "off");
}

// The fault of programs that wait one second: the dim they believe lost acts again.
TEST(Handshake, WhileItTransmitsItHearsNothingAndASecondTryActsTwice) {
  SerialPort port;
  EXPECT_TRUE(port.transmit("04 66", "6A"));
  EXPECT_TRUE(port.transmit("06 62", "68"));
  EXPECT_EQ(port.ask("56 64"), "BA");
  port.send("00");
  port.wait(1000);
  port.send("56 64");
  port.wait(600);
  EXPECT_EQ(port.heard(), "");
  EXPECT_EQ(port.answer(), "55");
  EXPECT_TRUE(port.transmit("56 64", "BA"));
  EXPECT_EQ(port.state("A1"), "on 9 %");
  EXPECT_TRUE(port.house.frames().back().duplicate);
  EXPECT_FALSE(port.house.frames()[2].duplicate);
}

TEST(Handshake, SeveralAddressesShareAFunction) {
  SerialPort port(instant());
  EXPECT_TRUE(port.transmit("04 66", "6A"));
  EXPECT_TRUE(port.transmit("04 62", "66"));
  EXPECT_TRUE(port.transmit("06 62", "68"));
  EXPECT_EQ(port.state("A1"), "on 100 %");
  EXPECT_EQ(port.state("A3"), "on 100 %");
  EXPECT_EQ(port.state("A2"), "off");
  EXPECT_EQ(port.house.take_reports(),
            (std::vector<std::string>{"A1 On: on 100 %", "A3 On: on 100 %"}));
}

}  // namespace
}  // namespace homewarden::emulator
