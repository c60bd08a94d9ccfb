#pragma once

#include "ui/controls.h"
#include "ui/tree_view.h"

namespace homewarden {

// The tree of panels, rooms and devices, with its pop-up menu.
struct NavigationPane {
  NavigationPane() { mnuPopup.entries = {&mnu_renametree, &mnu_deletetree}; }

  TreeView Tree;
  Property<int> side_width{264};  // in pixels, where the window has room for the tree
  Menu mnuPopup{"Menu1"};
  MenuEntry mnu_renametree{"Rename this item", "F2"};
  MenuEntry mnu_deletetree{"Delete this item", "Ctrl+D"};
};

}  // namespace homewarden
