// What the driver adds to the time of the mains: commands at the speed of a 60 Hz line, over a
// pseudo-terminal, from SendX10 to its end. The serial line's own time, ten bytes a command, is in
// the figures.
#include <QCoreApplication>
#include <QSocketNotifier>
#include <chrono>
#include <cstdio>
#include <filesystem>

#include "base/operations.h"
#include "platform/cm11/codec.h"
#include "platform/cm11/driver.h"
#include "platform/qt/qt_loop.h"
#include "platform/serial/qt_serial_stream.h"
#include "tools/emulator/pty_host.h"

namespace homewarden {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

struct Measured {
  const char* house;
  int function;
  double percent;
};

double milliseconds_since(Clock::time_point begun) {
  return std::chrono::duration<double, std::milli>(Clock::now() - begun).count();
}

Task<void> measure(InterfaceControl& interface, const emulator::Emulator& emulator) {
  interface.PortNumber(1);
  const int opened = co_await interface.OpenInterface();
  if (opened != 0) {
    std::printf("no interface: %d\n", opened);
    co_return;
  }
  // The last but one has the checksum that looks like a poll, and is asked for twice.
  constexpr Measured kCommands[] = {{"A", kX10On, 0},   {"A", kX10Off, 0},   {"G", kX10On, 0},
                                    {"A", kX10Dim, 25}, {"A", kX10Dim, 100}, {"D", kX10Dim, 100},
                                    {"A", kX10Off, 0}};
  double took_in_all = 0;
  double mains_in_all = 0;
  std::printf("%-16s %10s %10s %8s\n", "command", "took ms", "mains ms", "ratio");
  for (const Measured& command : kCommands) {
    const auto mains_before = emulator.mains_time();
    const auto begun = Clock::now();
    const int result =
        co_await interface.SendX10(command.house, "1", command.function, command.percent, 20, 50);
    const double took = milliseconds_since(begun);
    const auto mains = static_cast<double>((emulator.mains_time() - mains_before).count());
    const std::string name = command.house + ("1 " + cm11::function_name(command.function));
    std::printf("%-16s %10.1f %10.1f %8.4f%s\n", name.c_str(), took, mains, took / mains,
                result == 0 ? "" : "  FAILED");
    took_in_all += took;
    mains_in_all += mains;
  }
  std::printf("%-16s %10.1f %10.1f %8.4f\n", "all", took_in_all, mains_in_all,
              took_in_all / mains_in_all);
}

Task<void> measure_and_quit(EventLoop& loop, InterfaceControl& interface,
                            const emulator::Emulator& emulator) {
  co_await measure(interface, emulator);
  loop.quit();
}

void run() {
  qt::QtLoop loop;
  const fs::path folder = fs::temp_directory_path() /
                          ("driver_bench_" + std::to_string(QCoreApplication::applicationPid()));
  fs::create_directories(folder / "ports");
  emulator::Emulator emulator;
  emulator::PtyHost host(emulator, (folder / "ports" / "com1").string());
  emulator::PtyHostDriver host_driver(loop, host);
  if (const std::string error = host.plug(); !error.empty()) {
    std::printf("%s\n", error.c_str());
    return;
  }
  QSocketNotifier notifier(host.fd(), QSocketNotifier::Read);
  QObject::connect(&notifier, &QSocketNotifier::activated, &notifier,
                   [&host_driver] { host_driver.readable(); });

  serial::QtSerialStream stream(
      os_linux::PortNames(folder, os_linux::PortNames::Devices::kLinksOnly));
  cm11::Driver driver(loop, stream);
  Operations operations([](std::exception_ptr error) { std::rethrow_exception(error); });
  operations.start(measure_and_quit(loop, driver, emulator));
  QCoreApplication::exec();
  fs::remove_all(folder);
}

}  // namespace

}  // namespace homewarden

int main(int argc, char* argv[]) {
  QCoreApplication app(argc, argv);
  homewarden::run();
}
