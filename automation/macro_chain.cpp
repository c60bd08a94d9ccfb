#include "automation/macro_chain.h"

#include <algorithm>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <unordered_map>

#include "base/text.h"

namespace homewarden {
namespace {

// A device and what happens to it, as one text to compare.
std::string link(const MacroEnd& end) {
  return to_lower(end.code()) + ":" + std::to_string(end.function);
}

}  // namespace

std::vector<MacroEnd> endless_chain(const std::vector<Macro>& macros, const Macro& added) {
  std::unordered_multimap<std::string, const Macro*> by_trigger;
  for (const Macro& macro : macros) by_trigger.emplace(link(macro.trigger), &macro);

  // The shortest way from the target back to the trigger: breadth first, each link once.
  const std::string goal = link(added.trigger);
  std::map<std::string, const Macro*> reached{{link(added.target), &added}};
  std::deque<std::string> next{link(added.target)};
  while (!next.empty() && !reached.contains(goal)) {
    const auto [begin, end] = by_trigger.equal_range(next.front());
    next.pop_front();
    for (auto found = begin; found != end; ++found)
      if (reached.emplace(link(found->second->target), found->second).second)
        next.push_back(link(found->second->target));
  }
  if (!reached.contains(goal)) return {};

  std::vector<MacroEnd> chain;
  for (std::string at = goal;;) {
    const Macro* macro = reached.at(at);
    chain.push_back(macro->target);
    if (macro == &added) break;
    at = link(macro->trigger);
  }
  chain.push_back(added.trigger);
  std::reverse(chain.begin(), chain.end());
  return chain;
}

// What nothing sets off, or what sets nothing off, is on no way round; without it hardly anything
// is left to be looked at.
std::vector<MacroEnd> endless_chain_among(std::vector<Macro> macros) {
  for (std::size_t before = macros.size() + 1; macros.size() < before;) {
    before = macros.size();
    std::set<std::string> triggers;
    std::set<std::string> targets;
    for (const Macro& macro : macros) {
      triggers.insert(link(macro.trigger));
      targets.insert(link(macro.target));
    }
    std::erase_if(macros, [&](const Macro& macro) {
      return !targets.contains(link(macro.trigger)) || !triggers.contains(link(macro.target));
    });
  }
  for (const Macro& macro : macros)
    if (auto chain = endless_chain(macros, macro); !chain.empty()) return chain;
  return {};
}

}  // namespace homewarden
