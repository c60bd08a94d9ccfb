#pragma once

#include <filesystem>

#include "platform/linux/line_output.h"
#include "platform/qt/qt_loop.h"
#include "tools/emulator/emulator.h"
#include "tools/emulator/pty_host.h"

namespace homewarden {

// The demo's interface, power line and modules at the end of a pseudo-terminal, run by the
// program's own loop. A link in the machine-wide folder leads to the terminal and makes it a COM
// port like any other. What reaches the power line is printed.
class DemoLine {
 public:
  DemoLine(qt::QtLoop& loop, const std::filesystem::path& machine, os_linux::LineOutput& output);
  DemoLine(const DemoLine&) = delete;
  DemoLine& operator=(const DemoLine&) = delete;

 private:
  void print_reports();

  os_linux::LineOutput& output_;
  emulator::Emulator emulator_;
  emulator::PtyHost host_;
  emulator::PtyHostDriver driver_;
};

}  // namespace homewarden
