#pragma once

#include <string>

#include "base/text.h"
#include "platform/interface_control.h"
#include "ui/controls.h"
#include "ui/house_panel.h"

namespace homewarden {

// Shows in panel 3 of the status bar what is wrong with the interface, and "STATUS: Ready" when it
// is well again. To be called once; the status bar must live as long as the interface.
inline void show_interface_state(StatusBar& status, InterfaceControl& interface_control) {
  interface_control.TroubleChanged.connect([&status](const std::string& trouble) {
    status.panel3 = trouble.empty() ? "STATUS: Ready" : trouble;
  });
}

// Tells the cards whether commands reach the line, by what the status bar says of the interface. To
// be called once; the panel must live as long as the status bar.
inline void show_line_state(StatusBar& status, HousePanel& panel) {
  status.panel3.changed.connect([&status, &panel] {
    const std::string& text = status.panel3;
    panel.line_is_up = !contains_ignoring_case(text, "unplugged") &&
                       !contains_ignoring_case(text, "no interface found");
  });
}

}  // namespace homewarden
