#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tools/emulator/agenda.h"
#include "tools/emulator/faults.h"
#include "tools/emulator/interface_status.h"
#include "tools/emulator/macro_memory.h"
#include "tools/emulator/power_line.h"
#include "tools/emulator/serial_line.h"
#include "tools/emulator/upload_buffer.h"

namespace homewarden::emulator {

// The box between the serial line and the power line: handshakes, polls, clock and status.
//
// It does one thing at a time. While it transmits, or programs its memory, it hears nothing from
// the computer; a remote on the power line ends a handshake that has not got that far; while it has
// data for the computer it listens for the answer to its poll alone; while its clock is not set,
// for a clock setting alone.
class Interface {
 public:
  // `speed` as in Options.
  Interface(Agenda& agenda, PowerLine& line, SerialLine& serial, FaultBox& faults, double speed);

  void receive(std::uint8_t byte);

  // A frame on the power line, its own included.
  void hear(const Transmission& what, bool from_remote);
  void remote_begins();

  void fail_power();

  bool polls() const { return polls_; }
  bool wants_clock() const { return wants_clock_; }
  const std::vector<Upload>& uploads() const { return uploads_; }
  const MacroMemory& memory() const { return memory_; }

  // Called with a line for a person about what concerns the computer and the box alone.
  std::function<void(const std::string&)> on_report;

 private:
  enum class State { kIdle, kCollecting, kAwaitingAcknowledge, kTransmitting, kProgramming };

  void begin(std::uint8_t byte);
  void collect(std::uint8_t byte);
  void answer();
  void answer_header();
  void send_checksum();
  void acknowledged();
  void transmitted();
  void ready();
  void program_memory();
  void switch_ring();
  void set_clock();

  void become_idle();
  void limit_wait(std::chrono::milliseconds limit);
  void poll_if_needed();
  void repeat_poll();
  void answer_poll();
  void repeat_clock_request();
  void interrupt();

  // What has been begun: its first byte.
  std::uint8_t header() const { return static_cast<std::uint8_t>(collected_.front()); }
  bool collecting_clock() const { return header() == cm11::kClockHeader; }
  // Neither transmits nor programs.
  bool hears_computer() const {
    return state_ != State::kTransmitting && state_ != State::kProgramming;
  }
  bool send(const std::string& bytes) { return serial_.to_computer(bytes); }
  bool send(std::uint8_t byte) { return send(std::string(1, static_cast<char>(byte))); }

  Agenda& agenda_;
  PowerLine& line_;
  SerialLine& serial_;
  FaultBox& faults_;
  Microseconds repeat_time_;
  InterfaceStatus status_;
  UploadBuffer buffer_;
  std::vector<Upload> uploads_;
  MacroMemory memory_;
  Microseconds program_time_;

  State state_ = State::kIdle;
  std::string collected_;      // header and what follows it
  std::size_t expected_ = 0;   // bytes of it
  Transmission transmission_;  // what it says
  Agenda::Id wait_limit_ = 0;
  bool checksum_before_poll_ = false;  // the checksum was held up by a remote on the line

  bool polls_ = false;
  Agenda::Id poll_timer_ = 0;
  bool wants_clock_ = false;
  Agenda::Id clock_timer_ = 0;
};

}  // namespace homewarden::emulator
