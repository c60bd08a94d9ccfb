#pragma once

#include "platform/interface_control.h"
#include "ui/frm_main.h"

namespace homewarden {

// Shows in panel 3 of the status bar what is wrong with the interface, and that it is well again.
inline void show_interface_state(FrmMain& form, InterfaceControl& interface_control) {
  interface_control.TroubleChanged.connect([&form](const std::string& trouble) {
    form.Statusbar.panel3 = trouble.empty() ? "STATUS: Ready" : trouble;
  });
}

}  // namespace homewarden
