#pragma once

#include "core/settings.h"
#include "platform/window_call.h"
#include "ui/controls.h"
#include "ui/frm_systray.h"
#include "ui/program_menu.h"
#include "ui/window_services.h"

namespace homewarden {

// Puts the icon up and brings the window back: when it is clicked, and when the program is started
// a second time.
class Tray {
 public:
  // `picture` is what the icon shows.
  Tray(Window& form, ProgramMenu& menu, const Picture& picture, FrmSysTray& icon,
       Settings& settings, WindowServices& window, WindowCall& call);

  // Shown when there is a notification area, or as soon as one comes.
  void loadtray();
  // Nothing happens when it was not loaded.
  void unload();
  // Whether a window that is hidden now can be found again. False before loadtray() and without a
  // notification area, which is asked for anew each time.
  bool can_hide() const;

  // Brings the window of the copy that runs forward instead of this one's, also when it is hidden.
  // False when that copy could not be asked, because it starts or ends.
  bool show_other_copy() { return call_.ask(); }

 private:
  void mouse_down(int button);
  void hide_late();
  void restore();

  Window& form_;
  ProgramMenu& menu_;
  const Picture& picture_;
  FrmSysTray& icon_;
  Settings& settings_;
  WindowServices& window_;
  WindowCall& call_;
};

}  // namespace homewarden
