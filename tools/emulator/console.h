#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/emulator/faults.h"
#include "tools/emulator/modules.h"
#include "tools/emulator/power_line.h"

namespace homewarden::emulator {

using Words = std::vector<std::string>;

// At blanks and tabs, of which several count as one; none for a line without words.
Words split_words(std::string_view line);

// The rest of `fault NAME [count|probability]` after "fault"; also how faults are named on the
// command line. Returns what to print, which begins with "fault: " when it makes no sense.
std::string change_faults(const Words& words, FaultBox& faults);

// What a remote control sends for `TARGET [FUNCTION [ARGUMENTS]]`, the target being an address or,
// for a function alone, a house. Nothing when it makes no sense.
std::optional<std::vector<Transmission>> parse_remote(const Words& words);

// One line for each module of the house or address given, or without one of those that have a name
// or are on; "nothing is on" when there is none. Begins with "show: " when the words make no sense.
std::string show(const Words& words, const Modules& modules);

std::string_view console_help();

}  // namespace homewarden::emulator
