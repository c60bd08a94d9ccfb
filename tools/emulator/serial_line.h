#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "tools/emulator/agenda.h"
#include "tools/emulator/faults.h"

namespace homewarden::emulator {

// The cable between interface and computer: it takes its time for each byte, and spoils some.
class SerialLine {
 public:
  // `speed` as in Options.
  SerialLine(Agenda& agenda, FaultBox& faults, double speed);

  // Called with each byte from the computer when it has arrived.
  std::function<void(std::uint8_t)> on_byte;

  // Gone without a word while the cable is out.
  void from_computer(std::string_view bytes);

  // False when a fault spoilt the bytes, or the cable is out and they are gone.
  bool to_computer(std::string_view bytes);

  // The bytes that have arrived at the computer.
  std::string take_output();

  // Pulling the cable loses what is on the way.
  void set_plugged(bool plugged);

 private:
  bool spoil(std::string& bytes);
  void put_out(char byte);

  Agenda& agenda_;
  FaultBox& faults_;
  Microseconds byte_time_;
  Microseconds in_busy_until_{0};
  Microseconds out_busy_until_{0};
  std::uint64_t cable_ = 0;  // counts unplugging: bytes of an earlier count do not arrive
  bool plugged_ = true;
  std::string output_;
};

}  // namespace homewarden::emulator
