#pragma once

#include <algorithm>
#include <chrono>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "tools/emulator/emulator.h"

namespace homewarden::emulator {

// The computer's end of the cable, by hand: bytes as hexadecimal text in both directions, and a
// time that stands still but for wait().
class SerialPort {
 public:
  using Milliseconds = std::chrono::milliseconds;

  explicit SerialPort(const Options& options = {}) : house(options) {}

  // "04 66"
  void send(std::string_view bytes) {
    std::istringstream stream{std::string(bytes)};
    std::string raw;
    for (unsigned byte = 0; stream >> std::hex >> byte;) raw += static_cast<char>(byte);
    house.receive(raw, now);
    collect();
  }

  // Lets the time pass, stopping wherever the emulator has something to do.
  void wait(int milliseconds) {
    const Milliseconds end = now + Milliseconds(milliseconds);
    for (auto due = house.next_due(); due && *due <= end; due = house.next_due()) {
      now = std::max(now, *due);
      house.advance(now);
      collect();
    }
    now = end;
    house.advance(now);
    collect();
  }

  // The bytes that have come since the last call.
  std::string heard() { return std::exchange(heard_, {}); }

  // Waits for the next bytes and returns them; "" when none come within the limit.
  std::string answer(int limit = 15000) {
    for (int waited = 0; heard_.empty() && waited < limit; ++waited) wait(1);
    return heard();
  }

  // Sends and returns the answer.
  std::string ask(std::string_view bytes, int limit = 15000) {
    send(bytes);
    return answer(limit);
  }

  // A whole transmission with its checksum; true when ready comes.
  bool transmit(std::string_view bytes, std::string_view checksum) {
    return ask(bytes) == checksum && ask("00") == "55";
  }

  std::string console(std::string_view line) {
    std::string text = house.command(line, now);
    collect();
    return text;
  }

  std::string state(std::string_view address) const {
    return house.modules().at(*cm11::parse_address(std::string(address))).text();
  }

  Emulator house;
  Milliseconds now{0};

 private:
  void collect() {
    for (const char byte : house.take_output()) {
      constexpr std::string_view kDigits = "0123456789ABCDEF";
      const auto value = static_cast<unsigned char>(byte);
      if (!heard_.empty()) heard_ += ' ';
      heard_ += kDigits[value >> 4];
      heard_ += kDigits[value & 0x0F];
    }
  }

  std::string heard_;
};

// Everything on the lines happens at once.
inline Options instant() {
  Options options;
  options.speed = 0;
  return options;
}

}  // namespace homewarden::emulator
