#pragma once

#include <vector>

#include "automation/macro_line.h"

namespace homewarden {

// When saving `added` would let macros set each other off for ever: the chain, from the trigger of
// `added` to where it comes back to it. Empty otherwise.
std::vector<MacroEnd> endless_chain(const std::vector<Macro>& macros, const Macro& added);

// The first chain that sets itself off for ever among these macros; empty when there is none.
std::vector<MacroEnd> endless_chain_among(std::vector<Macro> macros);

}  // namespace homewarden
