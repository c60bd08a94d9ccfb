#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace homewarden::speech {

// A piece of a voice as it was registered: what stands in one pair of brackets, or between two.
struct VoicePart {
  std::string text;  // without blanks at its ends; may be empty: "[]"
  bool optional = false;

  bool operator==(const VoicePart&) const = default;
};

// The pieces of a voice such as "Hall [Lamp] [on]" in their order. Brackets inside brackets are
// left out, and one that is not closed ends with the text. Empty pieces outside brackets are none.
std::vector<VoicePart> parts_of_voice(std::string_view voice);

// A voice as the names of which it is made. A command for a device has a room and a device, with
// one word before ("bright", "cancel") or behind them ("on"); any other is all in `plain`.
struct VoiceForm {
  std::string before;
  std::string room;
  std::string device;
  std::string after;
  std::vector<VoicePart> plain;
  // Whether the words may be left out. A room cannot.
  bool device_optional = false;
  bool before_optional = false;
  bool after_optional = false;

  bool is_device() const { return plain.empty(); }
};

// Four shapes are commands for a device: "R [D] [w]", "w R [D]" and "[w] R [D]", where w is one
// word.
VoiceForm read_voice(std::string_view voice);

}  // namespace homewarden::speech
