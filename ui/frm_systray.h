#pragma once

#include <string>

#include "base/signal.h"

namespace homewarden {

// The program's icon in the notification area, shown while `loaded`. Buttons: 1 left, 2 right.
struct FrmSysTray {
  Property<bool> loaded{false};
  Property<std::string> ToolTip{"Homewarden"};
  Property<std::string> IconHandle;  // path of the picture; "" is the program's own icon
  Signal<int> SysTrayMouseDown;
  Signal<int> SysTrayMouseUp;
  Signal<> SysTrayMouseMove;
  Signal<int> SysTrayDoubleClick;

  // Without a notification area nothing can be found again there. Kept by the face, which brings it
  // up to date when it is asked to: an area may come and go with the desktop's panel.
  bool has_area = true;
  Signal<> area_asked;
  Signal<> area_came;  // from the face: one is there now, and the icon in it
};

}  // namespace homewarden
