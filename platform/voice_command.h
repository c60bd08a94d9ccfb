#pragma once

#include <string>

namespace homewarden {

// One entry of a character's command list.
struct VoiceCommand {
  std::string name;     // what the program knows it by: "on~A3"
  std::string caption;  // what the list shows: "Hall Lamp on"
  std::string voice;    // what is said; a word in square brackets may be left out
  bool enabled = true;  // whether it is listened for
  bool visible = true;  // whether the list shows it

  bool operator==(const VoiceCommand&) const = default;
};

}  // namespace homewarden
