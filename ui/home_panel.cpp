#include "ui/home_panel.h"

namespace homewarden {

HomePanel::HomePanel() {
  lab_norooms.visible = false;
  lab_notice.visible = false;
  lab_morechips.visible = false;
  cmd_alloff.visible = false;
}

OptionsPanel::OptionsPanel() {
  com_city.tool_tip =
      "Select the nearest City to you from this drop down list, this will be used to calculate "
      "Sunrise and Sunset times.";
  chk_lww.tool_tip = "Opens this window by itself when you log on to this computer.";
  chk_service.tool_tip =
      "While this window is closed, a service in the background takes over: events, macros and the "
      "web pages go on.";
  chk_startup.tool_tip =
      "Waits 20 seconds before it begins, so that the rest of the computer is ready. A "
      "service waits as well.";
}

}  // namespace homewarden
