#include "tools/emulator/serial_line.h"

#include <algorithm>
#include <utility>

#include "platform/cm11/codes.h"

namespace homewarden::emulator {

namespace {

// 4800 baud, and 10 bits a byte with its start and stop bit.
constexpr Microseconds kByteTime{10'000'000 / 4800};

}  // namespace

SerialLine::SerialLine(Agenda& agenda, FaultBox& faults, double speed)
    : agenda_(agenda),
      faults_(faults),
      byte_time_(speed <= 0 ? Microseconds(0)
                            : std::chrono::round<Microseconds>(kByteTime / speed)) {}

void SerialLine::from_computer(std::string_view bytes) {
  if (!plugged_) return;
  for (char byte : bytes) {
    in_busy_until_ = std::max(in_busy_until_, agenda_.now()) + byte_time_;
    if (faults_.strikes(Fault::kLostByteFromComputer)) continue;
    if (faults_.strikes(Fault::kChangedByteFromComputer))
      byte = static_cast<char>(byte ^ 1 << faults_.random(8));
    agenda_.after(in_busy_until_ - agenda_.now(), [this, byte, cable = cable_] {
      if (cable == cable_ && on_byte) on_byte(static_cast<std::uint8_t>(byte));
    });
  }
}

bool SerialLine::to_computer(std::string_view bytes) {
  if (!plugged_) return false;
  bool whole = true;
  for (const char byte : bytes) {
    std::string arriving(1, byte);
    if (spoil(arriving)) whole = false;
    for (const char arrives : arriving) put_out(arrives);
  }
  return whole;
}

bool SerialLine::spoil(std::string& bytes) {
  const char byte = bytes.front();
  if (faults_.strikes(Fault::kLostByteToComputer)) {
    bytes.clear();
  } else if (faults_.strikes(Fault::kChangedByte)) {
    bytes.front() = static_cast<char>(byte ^ 1 << faults_.random(8));
  } else if (faults_.strikes(Fault::kDoubledByte)) {
    bytes += byte;
  } else if (faults_.strikes(Fault::kNoise)) {
    auto noise = static_cast<std::uint8_t>(faults_.random(256));
    // Nobody can tell a ready that was never sent from a true one.
    if (noise == cm11::kReady) ++noise;
    bytes.insert(bytes.begin(), static_cast<char>(noise));
  } else {
    return false;
  }
  return true;
}

void SerialLine::put_out(char byte) {
  out_busy_until_ = std::max(out_busy_until_, agenda_.now()) + byte_time_;
  agenda_.after(out_busy_until_ - agenda_.now(), [this, byte, cable = cable_] {
    if (cable == cable_) output_ += byte;
  });
}

std::string SerialLine::take_output() {
  return std::exchange(output_, {});
}

void SerialLine::set_plugged(bool plugged) {
  plugged_ = plugged;
  ++cable_;
  output_.clear();
}

}  // namespace homewarden::emulator
