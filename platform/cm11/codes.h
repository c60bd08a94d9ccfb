#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/interface_control.h"

namespace homewarden::cm11 {

// House letters and units share one 4-bit code on the power line and on the serial line
// (docs/cm11-protocol.md, "Codes"): entry i is the code of house 'A' + i and of unit i + 1.
inline constexpr std::array<std::uint8_t, 16> kLineCodes = {0x6, 0xE, 0x2, 0xA, 0x1, 0x9, 0x5, 0xD,
                                                            0x7, 0xF, 0x3, 0xB, 0x0, 0x8, 0x4, 0xC};

// The code of the i-th house or unit, i from 0 to 15; not checked.
constexpr std::uint8_t line_code(int index) {
  return kLineCodes[static_cast<std::size_t>(index)];
}

// The reverse of line_code: which house or unit, 0 to 15, a 4-bit code stands for.
constexpr int line_index(std::uint8_t code) {
  for (int i = 0; i < 16; ++i)
    if (line_code(i) == (code & 0x0F)) return i;
  return 0;  // not reached: the table holds every 4-bit code
}

// A module's address: the house as 0 (A) to 15 (P), the unit as 1 to 16.
struct Address {
  int house = 0;
  int unit = 1;

  bool operator==(const Address&) const = default;
};

inline std::string to_text(const Address& address) {
  return static_cast<char>('A' + address.house) + std::to_string(address.unit);
}

// "A3", "p16". Nothing when the letter is not A to P or the number not 1 to 16.
inline std::optional<Address> parse_address(const std::string& text) {
  if (text.size() < 2 || text.size() > 3) return std::nullopt;
  const char letter = static_cast<char>(text[0] & ~0x20);
  if (letter < 'A' || letter > 'P') return std::nullopt;
  int unit = 0;
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i] < '0' || text[i] > '9') return std::nullopt;
    unit = unit * 10 + (text[i] - '0');
  }
  if (unit < 1 || unit > 16) return std::nullopt;
  return Address{letter - 'A', unit};
}

// One step of dimming of the serial protocol is 1/22 of the full range.
inline constexpr int kDimSteps = 22;

// The bytes that stand alone on the serial line.
inline constexpr std::uint8_t kAcknowledge = 0x00;   // computer: the checksum is right, transmit
inline constexpr std::uint8_t kReady = 0x55;         // interface: transmitted
inline constexpr std::uint8_t kPoll = 0x5A;          // interface: data waiting
inline constexpr std::uint8_t kPollAnswer = 0xC3;    // computer: send it
inline constexpr std::uint8_t kClockRequest = 0xA5;  // interface: power failed, set my clock
inline constexpr std::uint8_t kClockHeader = 0x9B;   // computer: the clock follows
inline constexpr std::uint8_t kMacroNotice = 0x5B;  // interface: a stored macro ran, 2 bytes follow
inline constexpr std::uint8_t kStatusRequest = 0x8B;  // computer: 14 bytes of status, please

}  // namespace homewarden::cm11
