#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/cm11/codes.h"
#include "tools/emulator/agenda.h"

namespace homewarden::emulator {

// What one frame, sent twice (or once a dim step), says.
struct Transmission {
  int house = 0;          // 0 (A) to 15 (P)
  bool function = false;  // else an address
  int code = 0;           // the unit 1 to 16, or the function
  int steps = 0;          // of 1/22, of Dim and Bright
  std::string extended;   // the bytes unit, data and command of an extended transmission

  bool operator==(const Transmission&) const = default;
};

// A transmission that went out on the power line.
struct LineFrame {
  std::chrono::milliseconds start{0};
  std::chrono::milliseconds end{0};
  bool from_remote = false;  // else from the computer
  Transmission what;
  // From the computer, and the same as the last frame before it on the line, whoever sent that.
  bool duplicate = false;
  // The modules that a function was for (see Modules::hear_function).
  std::vector<cm11::Address> modules = {};
};

// Cycles on the power line that a transmission takes without the quiet ones before it.
int line_cycles(const Transmission& what);

// Quiet cycles between two frames that follow each other.
inline constexpr int kQuietCycles = 3;

// The mains as a medium: who may send, how long it takes, what has been sent.
//
// A remote control waits until the line is free and then holds it for all it has to send. Remotes
// that wait go before the computer, which has always just been served.
class PowerLine {
 public:
  // `speed` as in Options.
  PowerLine(Agenda& agenda, int mains_hertz, double speed);

  // Called with each frame at its end, also with those of the computer.
  std::function<std::vector<cm11::Address>(const Transmission&, bool from_remote)> on_frame;

  // A remote takes the line.
  std::function<void()> on_remote_begins;

  // Only while no remote holds the line. Calls `done` at the end of the frame.
  void send(const Transmission& what, std::function<void()> done);

  // Takes the time of `what` on the line, but nothing of it can be understood by anyone.
  void collide(const Transmission& what, std::function<void()> done);

  // Queues what a remote control sends for one or more keys.
  void send_remote(std::vector<Transmission> what);

  bool remote_holds() const { return remote_holds_; }

  const std::vector<LineFrame>& frames() const { return frames_; }

  // See Emulator::mains_time.
  Microseconds mains_time() const { return mains_time_; }

 private:
  Microseconds mains_cycles(int count) const;
  Microseconds scaled(Microseconds mains_time) const;
  Microseconds take_line(const Transmission& what);
  void occupy(const Transmission& what, std::function<void(Microseconds start)> at_end);
  void start_remote();
  void continue_remote();
  void finish(const Transmission& what, bool from_remote, Microseconds start);

  Agenda& agenda_;
  int mains_hertz_;
  double speed_;
  std::deque<std::vector<Transmission>> remotes_;  // the first may be sending: what it has left
  bool remote_holds_ = false;
  bool computer_holds_ = false;
  bool used_ = false;
  Microseconds last_end_{0};
  Microseconds mains_time_{0};
  std::vector<LineFrame> frames_;
};

}  // namespace homewarden::emulator
