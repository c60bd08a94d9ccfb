#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tools/emulator/emulator.h"

namespace homewarden::emulator {

// What the command line of the tool asks for.
struct ToolOptions {
  Options emulator;
  std::string link;
  std::vector<std::string> faults;  // each as after `fault` on the console
  bool trace = false;
  bool keep = false;  // go on when the standard input ends
  bool help = false;
  std::string error;  // why the command line makes no sense; "" when it does
};

// `arguments` without the name of the program. Reads the house file that it names. Stops at the
// first thing that makes no sense, which `error` then says.
ToolOptions parse_tool_options(const std::vector<std::string>& arguments);

// The devices in the text of a room list, lines of the form `Room~Device~A~3`, as lamp modules.
// Other lines, and addresses that do not exist, are passed over.
std::vector<ModulePlace> parse_house(std::string_view text);

std::string_view tool_help();

}  // namespace homewarden::emulator
