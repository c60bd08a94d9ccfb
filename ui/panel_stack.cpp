#include "ui/panel_stack.h"

#include <algorithm>

namespace homewarden {

Frame* PanelStack::shown() const {
  const auto found = std::find_if(panels.begin(), panels.end(),
                                  [](const Frame* frame) { return frame->visible.get(); });
  return found == panels.end() ? nullptr : *found;
}

void PanelStack::show_only(Frame& frame) {
  // First the one, so that a face never has none to show.
  frame.visible = true;
  for (Frame* other : panels)
    if (other != &frame) other->visible = false;
}

}  // namespace homewarden
