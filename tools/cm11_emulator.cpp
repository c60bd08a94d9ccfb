#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "platform/linux/poller.h"
#include "tools/emulator/console.h"
#include "tools/emulator/pty_host.h"
#include "tools/emulator/tool_options.h"

namespace {

using namespace homewarden;
using std::chrono::milliseconds;

void trace(bool from_computer, std::string_view bytes, milliseconds now) {
  std::fprintf(stderr, "%8lld.%03d %s", static_cast<long long>(now.count() / 1000),
               static_cast<int>(now.count() % 1000), from_computer ? ">" : "<");
  for (const char byte : bytes)
    std::fprintf(stderr, " %02X", static_cast<unsigned>(static_cast<unsigned char>(byte)));
  std::fputc('\n', stderr);
}

// Takes whole lines off the front of what has been typed.
std::vector<std::string> take_lines(std::string& typed) {
  std::vector<std::string> lines;
  for (auto end = typed.find('\n'); end != std::string::npos; end = typed.find('\n')) {
    lines.push_back(typed.substr(0, end));
    typed.erase(0, end + 1);
  }
  return lines;
}

void print(const std::string& text) {
  if (!text.empty()) std::cout << text << '\n' << std::flush;
}

void print_reports(emulator::Emulator& house) {
  for (const auto& report : house.take_reports()) print(report);
}

void run(emulator::Emulator& house, emulator::PtyHost& host, bool keep) {
  const os_linux::EndSignals signals;
  std::string typed;
  int input = os_linux::kStandardInput;
  while (!host.quit_wanted()) {
    const auto ready = os_linux::wait_readable({host.fd(), input, signals.fd()}, host.next_due());
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
        print(host.command(line, os_linux::uptime()));
        print_reports(house);
      }
      if (!text && !keep) return;
      if (!text) input = -1;
    }
    print_reports(house);
  }
}

}  // namespace

int main(int count, char** arguments) {
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
  if (options.trace) host.on_bytes = trace;
  const std::string error = host.plug();
  if (!error.empty()) {
    std::cerr << error << '\n';
    return 1;
  }
  print(host.path());
  run(house, host, options.keep);
  return 0;
}
