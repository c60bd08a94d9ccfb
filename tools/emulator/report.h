#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tools/emulator/modules.h"
#include "tools/emulator/power_line.h"

namespace homewarden::emulator {

// "On", "All Units Off"; every function of the protocol, 0 to 15, has a name.
std::string_view function_name(int function);

// What a function on the power line did, one line for each module it was for ("A3 Dim 9/22: on
// 59 %"), or one that says that nobody listened. Nothing for an address.
std::vector<std::string> describe(const Transmission& what, bool from_remote,
                                  const std::vector<cm11::Address>& meant, const Modules& modules);

}  // namespace homewarden::emulator
