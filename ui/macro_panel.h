#pragma once

#include <string>
#include <vector>

#include "ui/controls.h"

namespace homewarden {

// A line of the macro list as a person reads it. One that is no macro has its text alone.
struct MacroFace {
  struct End {
    std::string room;    // "" when the house does not have the device
    std::string device;  // "Porch Light"
    std::string words;   // "turns on"; of what is switched "on"
    bool on = false;
    bool operator==(const End&) const = default;
  };
  End trigger;
  End target;
  std::string text;
  bool operator==(const MacroFace&) const = default;
};

// The macros and the boxes that one is built in.
struct MacroPanel {
  MacroPanel();

  Frame frm_macros{false};
  ComboBox com_sel1;
  ComboBox mac_event;
  ComboBox com_sel2;
  ComboBox mac_whattodo;
  Button com_savemacro{"Save"};
  ListBox ListVIew2;
  Property<std::vector<MacroFace>> macrofaces;  // one for each entry, in its order
  Label lab_nomacros{"No device switches another yet. Choose two, and save that as a macro."};
  Label lab_macroloop;      // which macros set each other off for ever; hidden when none do
  Label lab_macrosentence;  // what the four boxes say
  Label lab_macroself;      // why that cannot be saved
  Property<bool> macro_editor_open{false};  // asked for, where there is no room for both
  Label lab_macronotice;  // what is wrong with the macro list; hidden when nothing is
};

}  // namespace homewarden
