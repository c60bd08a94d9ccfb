#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/voice_command.h"
#include "ui/frm_character.h"

namespace homewarden {

// The names that a device's command is made of.
struct SpokenNames {
  std::string room;
  std::string device;

  bool operator==(const SpokenNames&) const = default;
};

// Nothing for a command that is no device's.
std::optional<SpokenNames> spoken_names(const VoiceCommand& command);

// The commands that the list shows, by room, in the order in which they were added. Each comes with
// the number by which it is chosen.
std::vector<CommandGroup> group_commands(const std::vector<std::pair<int, VoiceCommand>>& commands);

}  // namespace homewarden
