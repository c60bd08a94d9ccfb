#include "tools/emulator/pty_host.h"

#include <algorithm>
#include <utility>

namespace homewarden::emulator {

PtyHost::PtyHost(Emulator& emulator, std::string link)
    : emulator_(emulator), terminal_(std::move(link)) {}

std::string PtyHost::plug() {
  std::string error = terminal_.open();
  emulator_.set_plugged(terminal_.is_open());
  FdChanged();
  return error;
}

void PtyHost::unplug() {
  emulator_.set_plugged(false);
  terminal_.close();
  FdChanged();
}

void PtyHost::readable(Milliseconds now) {
  const std::string bytes = terminal_.read();
  if (on_bytes && !bytes.empty()) on_bytes(true, bytes, now);
  emulator_.receive(bytes, now);
  write_output(now);
}

void PtyHost::advance(Milliseconds now) {
  emulator_.advance(now);
  write_output(now);
}

std::string PtyHost::command(std::string_view line, Milliseconds now) {
  std::string answer = emulator_.command(line, now);
  write_output(now);
  const auto request = emulator_.take_host_request();
  if (request == HostRequest::kQuit) quit_wanted_ = true;
  if (request == HostRequest::kUnplug) {
    if (!terminal_.is_open()) return "unplug: is unplugged";
    unplug();
    return "unplugged";
  }
  if (request == HostRequest::kPlug) {
    if (terminal_.is_open()) return "plug: is plugged in as " + path();
    const std::string error = plug();
    return error.empty() ? "plugged in as " + path() : "plug: " + error;
  }
  return answer;
}

void PtyHost::write_output(Milliseconds now) {
  const std::string bytes = emulator_.take_output();
  if (bytes.empty()) return;
  if (on_bytes) on_bytes(false, bytes, now);
  terminal_.write(bytes);
}

void PtyHostDriver::readable() {
  host_.readable(loop_.uptime());
  work();
}

std::string PtyHostDriver::command(std::string_view line) {
  std::string answer = host_.command(line, loop_.uptime());
  work();
  return answer;
}

void PtyHostDriver::work() {
  loop_.cancel(timer_);
  timer_ = 0;
  if (const auto due = host_.next_due()) {
    timer_ = loop_.call_after(*due - loop_.uptime(), [this] {
      host_.advance(loop_.uptime());
      work();
    });
  }
  Worked();
}

}  // namespace homewarden::emulator
