#pragma once

#include <vector>

#include "ui/controls.h"

namespace homewarden {

// The panels of the window's right side, of which at most one shows.
struct PanelStack {
  std::vector<Frame*> panels;

  // The one that shows; nullptr when none does.
  Frame* shown() const;
  // Shows one of them, then hides the others, so that one shows at every moment.
  void show_only(Frame& frame);
};

}  // namespace homewarden
