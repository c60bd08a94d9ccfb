#pragma once

#include "core/notices.h"
#include "ui/controls.h"
#include "ui/home_panel.h"

namespace homewarden {

// Shows all notices on the home page, and each one that comes up in panel 2 of the status bar as
// well. To be called once, by who has all three for as long as they live.
inline void show_notices(HomePanel& home, StatusBar& status, Notices& notices) {
  notices.changed.connect([&home, &status, &notices](const std::string&, const std::string& text) {
    home.lab_notice.caption = notices.text();
    home.lab_notice.visible = !home.lab_notice.caption.get().empty();
    if (!text.empty()) status.panel2 = text;
  });
}

}  // namespace homewarden
