#include "ui/panel_stack.h"

namespace homewarden {

void PanelStack::show_only(Frame& frame) {
  // First the one, so that a face never has none to show.
  frame.visible = true;
  for (Frame* other : panels)
    if (other != &frame) other->visible = false;
}

}  // namespace homewarden
