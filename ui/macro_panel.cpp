#include "ui/macro_panel.h"

namespace homewarden {

MacroPanel::MacroPanel() {
  com_sel1.tool_tip = "This is the TRIGGER device";
  mac_event.tool_tip = "This is the TRIGGER action";
  com_sel2.tool_tip = "This is the deivce you wish to be triggered";
  mac_whattodo.tool_tip = "Finally this is the action you wish the triggered device to take";
  com_savemacro.tool_tip = "Click here to save this macro";
  lab_macronotice.visible = false;
  lab_nomacros.visible = false;
  lab_macroloop.visible = false;
  ListVIew2.tool_tip = "Click on any macro in this list to delete it.";
}

}  // namespace homewarden
