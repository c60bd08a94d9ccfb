#pragma once

#include <vector>

#include "ui/controls.h"

namespace homewarden {

// The panels of the window's right side, of which at most one shows.
struct PanelStack {
  std::vector<Frame*> panels;

  // Shows one of them and hides the others.
  void show_only(Frame& frame);
};

}  // namespace homewarden
