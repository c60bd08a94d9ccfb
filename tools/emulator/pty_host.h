#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/signal.h"
#include "platform/event_loop.h"
#include "platform/linux/pseudo_terminal.h"
#include "tools/emulator/emulator.h"

namespace homewarden::emulator {

// Puts an emulator at the end of a pseudo-terminal. It has no loop: whoever holds it watches fd(),
// calls readable() when there is input and advance() when next_due() has come, by one clock.
class PtyHost {
 public:
  using Milliseconds = std::chrono::milliseconds;

  // `link` as in PseudoTerminal.
  explicit PtyHost(Emulator& emulator, std::string link = {});

  // Opens the pseudo-terminal, a new one each time. Returns "" or why it could not.
  std::string plug();

  // Closes it: to a program that has it open, the port is gone. Bytes on their way are lost.
  void unplug();

  // -1 while unplugged. It changes with every plug() and unplug(); FdChanged says when.
  int fd() const { return terminal_.fd(); }
  Signal<> FdChanged;

  // The port for other programs to open.
  const std::string& path() const { return terminal_.path(); }

  // Neither waits; called too early they do nothing.
  void readable(Milliseconds now);
  void advance(Milliseconds now);
  // Nothing when nothing happens unless the computer sends.
  std::optional<Milliseconds> next_due() const { return emulator_.next_due(); }

  // One line of the console; `plug` and `unplug` are carried out. Returns what to print.
  std::string command(std::string_view line, Milliseconds now);

  // The console was told to quit.
  bool quit_wanted() const { return quit_wanted_; }

  // Told of all bytes that pass the terminal, for traces.
  std::function<void(bool from_computer, std::string_view bytes, Milliseconds now)> on_bytes;

 private:
  void write_output(Milliseconds now);

  Emulator& emulator_;
  os_linux::PseudoTerminal terminal_;
  bool quit_wanted_ = false;
};

// Drives a host from an event loop, which gives it time; its fd() remains to be watched by whoever
// can watch descriptors, and readable() to be called.
class PtyHostDriver {
 public:
  PtyHostDriver(EventLoop& loop, PtyHost& host) : loop_(loop), host_(host) {}
  ~PtyHostDriver() { loop_.cancel(timer_); }
  PtyHostDriver(const PtyHostDriver&) = delete;
  PtyHostDriver& operator=(const PtyHostDriver&) = delete;

  void readable();
  std::string command(std::string_view line);

  // Raised after anything that may have made reports (Emulator::take_reports).
  Signal<> Worked;

 private:
  void work();

  EventLoop& loop_;
  PtyHost& host_;
  EventLoop::CallId timer_ = 0;
};

}  // namespace homewarden::emulator
