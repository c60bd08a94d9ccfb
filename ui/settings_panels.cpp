#include "ui/settings_panels.h"

namespace homewarden {

ProfilePanel::ProfilePanel() {
  for (const char* profile :
       {"Christmas", "Events 1", "Events 2", "Events 3", "Holiday", "Standard", "Weekends"})
    com_profile.add(profile);
  cmd_switchprofile.visible = false;
}

}  // namespace homewarden
