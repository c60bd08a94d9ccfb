#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "platform/cm11/byte_stream.h"
#include "tests/platform/virtual_loop.h"
#include "tools/emulator/emulator.h"

namespace homewarden::testing {

// The serial port of an emulated interface, in memory and on the virtual clock.
class EmulatedPort : public cm11::ByteStream {
 public:
  EmulatedPort(VirtualLoop& loop, emulator::Emulator& emulator, int port)
      : loop_(loop), emulator_(emulator), port_(port), ports_{port} {}
  ~EmulatedPort() override { loop_.cancel(call_); }

  bool open(int port) override {
    opened.push_back(port);
    open_port_ = 0;
    if (std::ranges::find(ports_, port) != ports_.end()) open_port_ = port;
    settle();
    return open_port_ != 0;
  }
  void close() override { open_port_ = 0; }
  bool is_open() const override { return open_port_ != 0; }
  std::vector<int> present_ports() override { return ports_; }

  void write(std::string_view bytes) override {
    if (open_port_ == 0) return;
    written += bytes;
    if (open_port_ == port_) emulator_.receive(bytes, loop_.uptime());
    settle();
  }

  void unplug() {
    emulator_.set_plugged(false);
    std::erase(ports_, port_);
    port_ = 0;
    loop_.call_after(std::chrono::milliseconds(0), [this] {
      const bool was_open = is_open();
      close();
      if (was_open) Lost();
    });
  }

  void plug(int port) {
    port_ = port;
    ports_.push_back(port);
    emulator_.set_plugged(true);
    settle();
  }

  // Another port of the machine, at which nobody answers.
  void add_silent_port(int port) { ports_.push_back(port); }

  // Asks to be called when the emulator has something to do; after anything that was done to it.
  void settle() {
    loop_.cancel(call_);
    const auto due = emulator_.next_due();
    const auto delay = due ? *due - loop_.uptime() : std::chrono::milliseconds(0);
    call_ = loop_.call_after(delay, [this, due] {
      emulator_.advance(loop_.uptime());
      const std::string bytes = emulator_.take_output();
      if (open_port_ != 0 && open_port_ == port_ && !bytes.empty()) Received(bytes);
      if (due) settle();
    });
  }

  std::string written;
  std::vector<int> opened;  // every port that was tried

 private:
  VirtualLoop& loop_;
  emulator::Emulator& emulator_;
  int port_;
  int open_port_ = 0;
  std::vector<int> ports_;
  EventLoop::CallId call_ = 0;
};

}  // namespace homewarden::testing
