#include "ui/https_panel.h"

namespace homewarden {

HttpsPanel::HttpsPanel() {
  for (const char* plain : {kPlainAnswered, kPlainAtHome, kPlainSentOn}) com_webplain.add(plain);
  com_webplain.text = kPlainAtHome;
  lab_webcert.visible = false;
}

}  // namespace homewarden
