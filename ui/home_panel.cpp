#include "ui/home_panel.h"

namespace homewarden {

HomePanel::HomePanel() {
  lab_norooms.visible = false;
  lab_notice.visible = false;
}

OptionsPanel::OptionsPanel() {
  com_city.tool_tip =
      "Select the nearest City to you from this drop down list, this will be used to calculate "
      "Sunrise and Sunset times.";
}

}  // namespace homewarden
