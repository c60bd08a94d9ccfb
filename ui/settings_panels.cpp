#include "ui/settings_panels.h"

namespace homewarden {

WebPanel::WebPanel() {
  lab_webaddress.visible = false;
  lab_webmismatch.visible = false;
  for (TextBox* box : {&txt_webpassword, &txt_webagain})
    box->text.changed.connect([this] {
      const std::string& again = txt_webagain.text.get();
      lab_webmismatch.visible = !again.empty() && again != txt_webpassword.text.get();
    });
}

ProfilePanel::ProfilePanel() {
  for (const char* profile :
       {"Christmas", "Events 1", "Events 2", "Events 3", "Holiday", "Standard", "Weekends"})
    com_profile.add(profile);
  cmd_switchprofile.visible = false;
}

}  // namespace homewarden
