#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <string_view>
#include <utility>

#include "tests/cm11/hex_text.h"
#include "tools/emulator/emulator.h"

namespace homewarden::emulator {

// Everything on the lines happens at once.
inline Options instant() {
  Options options;
  options.speed = 0;
  return options;
}

// The computer's end of the cable, by hand: bytes as hexadecimal text in both directions, and a
// time that stands still but for wait().
class SerialPort {
 public:
  using Milliseconds = std::chrono::milliseconds;

  explicit SerialPort(const Options& options = {}) : house(options) {}

  // Plays a conversation, its steps divided by "|":
  //   04 66 -> 6A         the computer writes and this is answered; "?" stands for any digit,
  //                       "not 6A" for anything else, nothing for silence
  //   wait 3000 -> 5A 5A  what comes in these milliseconds; without "->" it does not matter
  //   -> 55               what comes next
  //   A1 on 27 %          the state of a module
  //   remote B2 on        whatever else is a line for the console
  void play(const std::string& conversation) {
    for (const std::string& step : testing::steps_of(conversation)) {
      SCOPED_TRACE(step);
      const auto arrow = step.find("->");
      const std::string said = testing::trimmed(step.substr(0, arrow));
      if (said.starts_with("wait "))
        wait(std::stoi(said.substr(5)));
      else if (said.find_first_not_of("0123456789ABCDEF ") == std::string::npos)
        send(said);
      else if (const auto word = said.substr(0, said.find(' ')); cm11::parse_address(word))
        EXPECT_EQ(said, word + " " + state(word));
      else
        EXPECT_EQ(console(said).find("say"), std::string::npos);
      if (arrow != std::string::npos)
        expect(testing::trimmed(step.substr(arrow + 2)),
               said.starts_with("wait") ? heard() : answer());
      else if (said.starts_with("wait"))
        heard();
    }
  }

  // "04 66"
  void send(const std::string& bytes) {
    house.receive(testing::raw(bytes), now);
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
  std::string heard() { return testing::hex(std::exchange(heard_, {})); }

  // Waits for the next bytes that come together; "" when none do for longer than any command takes.
  std::string answer() {
    for (int waited = 0; heard_.empty() && waited < 15000; ++waited) wait(1);
    for (std::size_t before = 0; before != heard_.size();) {
      before = heard_.size();
      wait(4);  // a byte takes 2
    }
    return heard();
  }

  std::string ask(const std::string& bytes) {
    send(bytes);
    return answer();
  }

  std::string console(std::string_view line) {
    std::string text = house.command(line, now);
    collect();
    return text;
  }

  std::string state(const std::string& address) const {
    return house.modules().at(*cm11::parse_address(address)).text();
  }

  Emulator house;
  Milliseconds now{0};

 private:
  static void expect(const std::string& wanted, const std::string& came) {
    if (wanted.starts_with("not ")) {
      EXPECT_NE(came, wanted.substr(4));
      return;
    }
    std::string masked = came;
    for (std::size_t i = 0; i < std::min(wanted.size(), came.size()); ++i)
      if (wanted[i] == '?') masked[i] = '?';
    EXPECT_EQ(masked, wanted) << came;
  }

  void collect() { heard_ += house.take_output(); }

  std::string heard_;
};

}  // namespace homewarden::emulator
