#include "voice/voice_commands.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"

namespace homewarden {
namespace {

using What = VoiceOrder::What;

constexpr std::array<std::pair<std::string_view, What>, 4> kKeys = {{
    {"on~", What::kOn},
    {"off~", What::kOff},
    {"dim~", What::kDim},
    {"bright~", What::kBright},
}};

// A bracket of a name would change what of the voice may be left out.
std::string without_brackets(std::string name) {
  std::replace_if(
      name.begin(), name.end(), [](char c) { return c == '[' || c == ']'; }, ' ');
  return name;
}

}  // namespace

std::vector<VoiceCommand> fixed_voice_commands() {
  return {{std::string(kPropertiesCommand), "Change Speech Properties", "Speech Properties"},
          {std::string(kRepeatCommand), "Repeat Command", "[repeat] command"}};
}

std::vector<VoiceCommand> voice_commands_of(const Device& device) {
  const std::string at = device.house_code + std::to_string(device.unit);
  const std::string who = device.room + " " + device.name;
  const std::string said =
      without_brackets(device.room) + " [" + without_brackets(device.name) + "]";
  return {{"on~" + at, who + " on", said + " [on]"},
          {"bright~" + at, "Bright " + who, "Bright " + said},
          {"dim~" + at, "Dim " + who, "Dim " + said},
          {"off~" + at, "Cancel " + who, "[Cancel] " + said}};
}

std::optional<VoiceOrder> voice_order(std::string_view name) {
  for (const auto& [key, what] : kKeys) {
    if (!contains_ignoring_case(name, key)) continue;
    const std::string_view rest = name.substr(std::min(key.size(), name.size()));
    const auto unit =
        static_cast<int>(leading_number(rest.substr(std::min<std::size_t>(1, rest.size()))));
    return VoiceOrder{what, std::string(rest.substr(0, 1)), unit};
  }
  return {};
}

}  // namespace homewarden
