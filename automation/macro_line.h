#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/list_file.h"

namespace homewarden {

// The end of a chain link: a device and what happens to it, as X10 functions (2 on, 3 off, 4
// dimmed).
struct MacroEnd {
  std::string house_code;  // as it is written, one letter from A to P
  int unit = 0;            // 1 to 16; 0 when the line has no address here
  std::string odd_code;    // what the line has instead, as it is written
  std::string name;        // "Hall Lamp"; "" when the line has none
  int function = 0;

  // False for what a person wrote into the file that is no address of the power line, or is written
  // as "A01", which is found by nobody.
  bool has_address() const { return unit > 0; }
  // "A1", or what stands there instead; "" when nothing does.
  std::string code() const;
};

// What one line of the macro list says: when the trigger happens, the target is switched.
struct Macro {
  MacroEnd trigger;
  MacroEnd target;  // 2 or 3
};

// The texts of the four boxes of the macro panel. Nothing unless both devices are labels with an
// address, the event is "On", "Off" or "Dim" and the action "Turn On" or "Turn Off".
std::optional<Macro> macro_of_choices(std::string_view trigger_label, std::string_view event,
                                      std::string_view target_label, std::string_view action);

// The line as it stands in the file, without its end; docs/data-files.md.
std::string macro_line(const Macro& macro);

// Nothing for a line that is no macro: without a trigger, its words or an action.
std::optional<Macro> parse_macro(std::string_view line);

// The line as the macro panel lists it, with blanks for tildes: also one that is no macro.
std::string shown_macro(std::string_view line);

// The lines of a macro list that are shown as the text; without one, those that contain its words.
// None for an empty text.
ListFile::Choice lines_of_macro(std::string_view content, std::string_view shown);

// What happens to the end: "turns on", "turns off", "turns dim"; "" for another function.
std::string event_words(const MacroEnd& end);

// "Hall Lamp A1 turns on", without a name "A1 turns on". The function must be 2, 3 or 4.
std::string in_words(const MacroEnd& end);

}  // namespace homewarden
