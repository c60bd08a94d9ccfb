#pragma once

#include <chrono>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "core/time_text.h"
#include "platform/interface_control.h"
#include "platform/waiting.h"

namespace homewarden::testing {

// An interface without a power line: answers as it is told and writes down what it is asked, with
// the second of uptime at which it was asked.
class FakeInterface : public InterfaceControl {
 public:
  explicit FakeInterface(EventLoop& loop) : loop_(loop) {}

  void PortNumber(int port) override {
    port_ = port;
    note("port " + std::to_string(port));
  }

  Task<int> OpenInterface() override {
    note("open");
    if (opening_time.count() > 0) co_await Delay(loop_, opening_time);
    const auto found = status_of_port.find(port_);
    co_return found == status_of_port.end() ? 1 : found->second;
  }

  std::string refused_ports() override { return refused; }

  void NumericOption(int option) override { note("option " + std::to_string(option)); }
  void ClientName(const std::string& name) override { note("client " + name); }

  Task<bool> CloseInterface() override {
    note("close");
    co_return !refuses_close;
  }

  bool is_receiving() override { return receives; }

  Task<int> SendX10(std::string house, std::string unit, int function, double amount, int option1,
                    int option2) override {
    std::ostringstream text;
    text << "send " << house << unit << ' ' << function << ' ' << amount << ' ' << option1 << ' '
         << option2;
    note(text.str());
    static const char* const kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    const LocalTime now = loop_.local_time();
    std::ostringstream entry;
    entry << kDays[now.weekday] << ' ' << hh_mm_ss(now) << ' ' << house << unit << ' ' << function;
    if (function == kX10Dim) entry << ' ' << amount;
    line_log.push_back(entry.str());
    co_await Delay(loop_, mains_time);
    co_return fails ? 1 : 0;
  }

  // What was asked, without the times; the notes are gone afterwards.
  std::vector<std::string> take_notes() { return std::exchange(notes_, {}); }
  // Uptime in milliseconds of each note, as far as take_notes was not called.
  const std::vector<long>& times() const { return times_; }

  // What went to the power line and when: "Fri 19:18:00 B12 2", the amount behind a Dim.
  std::vector<std::string> take_line_log() { return std::exchange(line_log, {}); }
  std::vector<std::string> line_log;

  std::map<int, int> status_of_port;  // 1 where nothing is said
  std::chrono::milliseconds mains_time{0};
  std::chrono::milliseconds opening_time{0};
  std::string refused;  // what refused_ports() says
  bool receives = false;
  bool refuses_close = false;
  bool fails = false;  // nothing that is sent goes out

 private:
  void note(std::string text) {
    notes_.push_back(std::move(text));
    times_.push_back(static_cast<long>(loop_.uptime().count()));
  }

  EventLoop& loop_;
  int port_ = 0;
  std::vector<std::string> notes_;
  std::vector<long> times_;
};

}  // namespace homewarden::testing
