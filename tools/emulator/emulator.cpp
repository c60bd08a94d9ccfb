#include "tools/emulator/emulator.h"

#include <utility>

#include "tools/emulator/console.h"
#include "tools/emulator/interface.h"
#include "tools/emulator/report.h"
#include "tools/emulator/serial_line.h"

namespace homewarden::emulator {

struct Emulator::Parts {
  explicit Parts(const Options& options)
      : faults(options.seed),
        modules(options.modules),
        line(agenda, options.mains_hertz, options.speed),
        serial(agenda, faults, options.speed),
        interface(agenda, line, serial, faults, options.speed) {
    line.on_frame = [this](const Transmission& what, bool from_remote) {
      return frame(what, from_remote);
    };
    line.on_remote_begins = [this] { interface.remote_begins(); };
    serial.on_byte = [this](std::uint8_t byte) { interface.receive(byte); };
    interface.on_report = [this](const std::string& text) { reports.push_back(text); };
    faults.on_strike = [this](Fault fault) {
      reports.push_back("fault: " + std::string(description(fault)));
    };
  }

  std::vector<cm11::Address> frame(const Transmission& what, bool from_remote) {
    std::vector<cm11::Address> meant;
    // The modules of this house do not know extended transmissions.
    if (what.extended.empty()) {
      if (what.function)
        meant = modules.hear_function(what.house, what.code, what.steps);
      else
        modules.hear_address({what.house, what.code});
    }
    for (auto& text : describe(what, from_remote, meant, modules)) reports.push_back(text);
    interface.hear(what, from_remote);
    return meant;
  }

  std::string command(std::string_view text) {
    Words words = split_words(text);
    if (words.empty()) return "";
    const std::string verb = words.front();
    words.erase(words.begin());
    if (verb == "show") return show(words, modules);
    if (verb == "fault") return change_faults(words, faults);
    if (verb == "remote") {
      auto keys = parse_remote(words);
      if (!keys) return "remote: say ADDRESS on|off|dim STEPS|bright STEPS (see help)";
      line.send_remote(std::move(*keys));
      return "";
    }
    if (!words.empty()) return verb + ": takes no argument, or is unknown (see help)";
    if (verb == "help") return std::string(console_help());
    if (verb == "memory") return interface.memory().text();
    if (verb == "clock-request")
      interface.fail_power();
    else if (verb == "unplug")
      host_request = HostRequest::kUnplug;
    else if (verb == "plug")
      host_request = HostRequest::kPlug;
    else if (verb == "quit")
      host_request = HostRequest::kQuit;
    else
      return verb + ": unknown (see help)";
    return "";
  }

  Agenda agenda;
  FaultBox faults;
  Modules modules;
  PowerLine line;
  SerialLine serial;
  Interface interface;
  std::vector<std::string> reports;
  std::optional<HostRequest> host_request;
};

Emulator::Emulator(const Options& options) : parts_(std::make_unique<Parts>(options)) {}

Emulator::~Emulator() = default;

void Emulator::receive(std::string_view bytes, Milliseconds now) {
  advance(now);
  parts_->serial.from_computer(bytes);
  advance(now);
}

void Emulator::advance(Milliseconds now) {
  parts_->agenda.run_until(now);
}

std::optional<Emulator::Milliseconds> Emulator::next_due() const {
  const auto next = parts_->agenda.next();
  if (!next) return std::nullopt;
  return std::chrono::ceil<Milliseconds>(*next);
}

std::string Emulator::take_output() {
  return parts_->serial.take_output();
}

std::vector<std::string> Emulator::take_reports() {
  return std::exchange(parts_->reports, {});
}

std::string Emulator::command(std::string_view line, Milliseconds now) {
  advance(now);
  const std::string answer = parts_->command(line);
  advance(now);
  return answer;
}

std::optional<HostRequest> Emulator::take_host_request() {
  return std::exchange(parts_->host_request, std::nullopt);
}

void Emulator::set_plugged(bool plugged) {
  parts_->serial.set_plugged(plugged);
}

void Emulator::fail_power(Milliseconds now) {
  advance(now);
  parts_->interface.fail_power();
  advance(now);
}

FaultBox& Emulator::faults() {
  return parts_->faults;
}

const Modules& Emulator::modules() const {
  return parts_->modules;
}

Emulator::Milliseconds Emulator::mains_time() const {
  return std::chrono::round<Milliseconds>(parts_->line.mains_time());
}

const std::vector<LineFrame>& Emulator::frames() const {
  return parts_->line.frames();
}

const std::vector<Upload>& Emulator::uploads() const {
  return parts_->interface.uploads();
}

bool Emulator::wants_computer() const {
  return parts_->interface.polls() || parts_->interface.wants_clock();
}

}  // namespace homewarden::emulator
