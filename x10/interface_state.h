#pragma once

#include "platform/interface_control.h"
#include "ui/controls.h"

namespace homewarden {

// Shows in panel 3 of the status bar what is wrong with the interface, and "STATUS: Ready" when it
// is well again. To be called once; the status bar must live as long as the interface.
inline void show_interface_state(StatusBar& status, InterfaceControl& interface_control) {
  interface_control.TroubleChanged.connect([&status](const std::string& trouble) {
    status.panel3 = trouble.empty() ? "STATUS: Ready" : trouble;
  });
}

}  // namespace homewarden
