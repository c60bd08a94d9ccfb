#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/emulator/faults.h"
#include "tools/emulator/modules.h"
#include "tools/emulator/power_line.h"
#include "tools/emulator/upload_buffer.h"

namespace homewarden::emulator {

struct Options {
  int mains_hertz = 60;  // 50 or 60

  // How many times faster than the mains the power line, the serial line and the repeated requests
  // run; 0 takes no time at all. The time an interface gives the computer to answer, and the time
  // by which the late-ready faults are late, do not shrink with it.
  double speed = 1;

  // The modules in the house. When none is named there is a lamp module at every address.
  std::vector<ModulePlace> modules;

  std::uint32_t seed = 1;  // of the faults that happen at random
};

// What a console command asks of whoever holds the line between interface and computer.
enum class HostRequest { kUnplug, kPlug, kQuit };

// The computer interface, the power line and the modules, seen from the computer's serial port. It
// has no clock: every call says what time it is, by a clock of the caller's that never goes back.
class Emulator {
 public:
  using Milliseconds = std::chrono::milliseconds;

  explicit Emulator(const Options& options = {});
  ~Emulator();
  Emulator(const Emulator&) = delete;
  Emulator& operator=(const Emulator&) = delete;

  // Bytes that the computer wrote.
  void receive(std::string_view bytes, Milliseconds now);

  // Does everything that is due by now. To be called at next_due() at the latest for the times on
  // the line to be right; a later call only makes it late.
  void advance(Milliseconds now);

  // When something happens next if the computer sends nothing.
  std::optional<Milliseconds> next_due() const;

  // Bytes for the computer that have left the interface since the last call.
  std::string take_output();

  // Lines for a person since the last call, oldest first: each function that went out on the power
  // line with the new state of the module ("A3 Dim 9/22: on 59 %"), each fault that happened, each
  // block of memory written, the ring line switched.
  std::vector<std::string> take_reports();

  // Carries out one line of the console (docs/emulator.md, "Commands") and returns what to print;
  // a line that makes no sense changes nothing and the answer says so.
  std::string command(std::string_view line, Milliseconds now);

  // What a console command asked of the host of this emulator since the last call.
  std::optional<HostRequest> take_host_request();

  // While the cable is out nothing is received and everything sent is gone; the power line goes on.
  void set_plugged(bool plugged);

  // Power has failed: the interface asks for its clock and does nothing else until it is set.
  void fail_power(Milliseconds now);

  FaultBox& faults();
  const Modules& modules() const;

  // Power-line time used so far at the speed of the real mains, quiet cycles between frames that
  // follow each other included.
  Milliseconds mains_time() const;

  // Every transmission that went out on the power line, oldest first.
  const std::vector<LineFrame>& frames() const;

  // Every upload sent to the computer, as it was before any fault touched it, oldest first.
  const std::vector<Upload>& uploads() const;

  // True while the interface waits to be asked for data (5A) or for its clock (A5).
  bool wants_computer() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace homewarden::emulator
