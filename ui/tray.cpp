#include "ui/tray.h"

#include <string>

#include "core/version.h"
#include "ui/key_codes.h"

namespace homewarden {

Tray::Tray(Window& form, ProgramMenu& menu, const Picture& picture, FrmSysTray& icon,
           Settings& settings, WindowServices& window, WindowCall& call)
    : form_(form),
      menu_(menu),
      picture_(picture),
      icon_(icon),
      settings_(settings),
      window_(window),
      call_(call) {
  icon.SysTrayDoubleClick.connect([this](int) { restore(); });
  icon.SysTrayMouseDown.connect([this](int button) { mouse_down(button); });
  icon.area_came.connect([this] { hide_late(); });
}

void Tray::loadtray() {
  icon_.loaded = true;
  icon_.ToolTip = std::string("Homewarden Version ") + kVersion;
  icon_.IconHandle = picture_.file.get();
  call_.listen([this] { restore(); });
}

void Tray::unload() {
  call_.stop_listening();
  icon_.loaded = false;
}

bool Tray::can_hide() const {
  icon_.area_asked();
  return icon_.loaded && icon_.has_area;
}

void Tray::mouse_down(int button) {
  if (button == kRightButton)
    menu_.sspp3.popped_up();
  else
    restore();
}

// A window that was hidden the last time begins minimised when the program starts before the
// desktop's panel. Whoever has minimised or opened it since has changed the setting or the state.
void Tray::hide_late() {
  const bool was_hidden = settings_.read("data", "state", "0") == "1";
  if (was_hidden && form_.state == WindowState::kMinimized) form_.resized();
}

void Tray::restore() {
  settings_.write("data", "state", "0");
  form_.state = WindowState::kNormal;  // where it could not be hidden it lies minimised
  form_.visible = true;
  window_.ontop();
  window_.offtop();
  form_.raised();
}

}  // namespace homewarden
