#pragma once

#include "ui/controls.h"

namespace homewarden {

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
  Label lab_macronotice;  // what is wrong with the macro list; hidden when nothing is
};

}  // namespace homewarden
