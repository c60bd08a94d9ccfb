#include "voice/command_groups.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "base/text.h"
#include "voice/voice_commands.h"

namespace homewarden {
namespace {

std::string_view words_before(VoiceOrder::What what) {
  switch (what) {
    case VoiceOrder::What::kOn:
      return "";
    case VoiceOrder::What::kOff:
      return "[Cancel] ";
    case VoiceOrder::What::kDim:
      return "Dim ";
    case VoiceOrder::What::kBright:
      return "Bright ";
  }
  return "";
}

}  // namespace

std::optional<SpokenNames> spoken_names(const VoiceCommand& command) {
  const auto order = voice_order(command.name);
  if (!order) return {};
  std::string_view voice = command.voice;
  const std::string_view before = words_before(order->what);
  if (!voice.starts_with(before)) return {};
  voice.remove_prefix(before.size());
  const auto begin = voice.find(" [");
  if (begin == std::string_view::npos) return {};
  const std::string_view rest = voice.substr(begin + 2);
  return SpokenNames{std::string(trim_blanks(voice.substr(0, begin))),
                     std::string(trim_blanks(rest.substr(0, rest.find(']'))))};
}

std::vector<CommandGroup> group_commands(
    const std::vector<std::pair<int, VoiceCommand>>& commands) {
  std::vector<CommandGroup> groups;
  for (const auto& [number, command] : commands) {
    if (!command.visible) continue;
    const std::string room = spoken_names(command).value_or(SpokenNames()).room;
    auto group = std::find_if(groups.begin(), groups.end(),
                              [&room](const CommandGroup& one) { return one.caption == room; });
    if (group == groups.end()) group = groups.insert(groups.end(), CommandGroup{room, {}});
    group->choices.push_back({command.caption, number});
  }
  return groups;
}

}  // namespace homewarden
