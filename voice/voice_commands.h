#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/devices.h"
#include "platform/speech_agent.h"

namespace homewarden {

inline constexpr std::string_view kPropertiesCommand = "Properties";
inline constexpr std::string_view kRepeatCommand = "repeat";

// The two commands that every house has: the property sheet, and the last command again.
std::vector<VoiceCommand> fixed_voice_commands();
// On, brighter, dimmer, off, in this order.
std::vector<VoiceCommand> voice_commands_of(const Device& device);

// What the name of a command asks of an address.
struct VoiceOrder {
  enum class What { kOn, kOff, kDim, kBright };

  What what = What::kOn;
  std::string house_code;
  int unit = 0;  // 0 when the name has no number there

  bool operator==(const VoiceOrder&) const = default;
};

// Nothing for a name that is no device's command. Letter case does not count.
std::optional<VoiceOrder> voice_order(std::string_view name);

}  // namespace homewarden
