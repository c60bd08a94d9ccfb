#pragma once

#include "core/settings.h"
#include "ui/frm_main.h"
#include "ui/frm_systray.h"
#include "ui/window_services.h"

namespace homewarden {

// Puts the icon up and brings the window back when it is clicked.
class Tray {
 public:
  Tray(FrmMain& form, FrmSysTray& icon, Settings& settings, WindowServices& window);

  void loadtray();
  void unload();
  // Whether a hidden window can be found again.
  bool can_hide() const { return icon_.has_area; }

 private:
  void mouse_down(int button);
  void restore();

  FrmMain& form_;
  FrmSysTray& icon_;
  Settings& settings_;
  WindowServices& window_;
};

}  // namespace homewarden
