#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/line_output.h"
#include "platform/linux/poller.h"
#include "tools/emulator/console.h"
#include "tools/emulator/pty_host.h"
#include "tools/emulator/tool_options.h"

namespace {

using namespace homewarden;
using std::chrono::milliseconds;

// What the tool prints while it runs. Nobody who does not read it holds up the interface.
struct Printer {
  os_linux::LineOutput output{STDOUT_FILENO};
  os_linux::LineOutput error{STDERR_FILENO};

  void print(const std::string& text) {
    if (!text.empty()) output.print(text);
  }

  void print_reports(emulator::Emulator& house) {
    for (const auto& report : house.take_reports()) print(report);
  }

  void trace(bool from_computer, std::string_view bytes, milliseconds now) {
    char piece[32];
    std::snprintf(piece, sizeof piece, "%8lld.%03d %s", static_cast<long long>(now.count() / 1000),
                  static_cast<int>(now.count() % 1000), from_computer ? ">" : "<");
    std::string line = piece;
    for (const char byte : bytes) {
      std::snprintf(piece, sizeof piece, " %02X", static_cast<unsigned char>(byte));
      line += piece;
    }
    error.print(line);
  }

  // When to come back for what could not be printed, or else `until`.
  std::optional<milliseconds> go_on(std::optional<milliseconds> until) {
    const bool output_done = output.go_on();
    if (error.go_on() && output_done) return until;
    const milliseconds again = os_linux::uptime() + milliseconds(500);
    return until ? std::min(*until, again) : again;
  }
};

// Takes whole lines off the front of what has been typed.
std::vector<std::string> take_lines(std::string& typed) {
  std::vector<std::string> lines;
  for (auto end = typed.find('\n'); end != std::string::npos; end = typed.find('\n')) {
    lines.push_back(typed.substr(0, end));
    typed.erase(0, end + 1);
  }
  return lines;
}

void run(emulator::Emulator& house, emulator::PtyHost& host, Printer& printer, bool keep) {
  const os_linux::EndSignals signals;
  std::string typed;
  int input = os_linux::kStandardInput;
  while (!host.quit_wanted()) {
    const auto ready =
        os_linux::wait_readable({host.fd(), input, signals.fd()}, printer.go_on(host.next_due()));
    if (ready[2]) return;
    if (ready[0])
      host.readable(os_linux::uptime());
    else
      host.advance(os_linux::uptime());
    if (ready[1]) {
      const auto text = os_linux::read_some(input);
      // The last line counts even when nothing ends it.
      typed += text.value_or(typed.empty() ? "" : "\n");
      for (const auto& line : take_lines(typed)) {
        if (host.quit_wanted()) break;
        printer.print(host.command(line, os_linux::uptime()));
        printer.print_reports(house);
      }
      if (!text && !keep) return;
      if (!text) input = -1;
    }
    printer.print_reports(house);
  }
}

}  // namespace

int main(int count, char** arguments) {
  os_linux::prepare_standard_streams();
  const auto options =
      emulator::parse_tool_options(std::vector<std::string>(arguments + 1, arguments + count));
  if (!options.error.empty()) {
    std::cerr << options.error << '\n';
    return 2;
  }
  if (options.help) {
    std::cout << emulator::tool_help();
    return 0;
  }
  emulator::Emulator house(options.emulator);
  for (const auto& fault : options.faults) {
    const std::string answer =
        emulator::change_faults(emulator::split_words(fault), house.faults());
    if (answer.starts_with("fault: ")) {
      std::cerr << answer << '\n';
      return 2;
    }
  }
  emulator::PtyHost host(house, options.link);
  Printer printer;
  if (options.trace)
    host.on_bytes = [&printer](bool from_computer, std::string_view bytes, milliseconds now) {
      printer.trace(from_computer, bytes, now);
    };
  const std::string error = host.plug();
  if (!error.empty()) {
    std::cerr << error << '\n';
    return 1;
  }
  printer.print(host.path());
  run(house, host, printer, options.keep);
  return 0;
}
