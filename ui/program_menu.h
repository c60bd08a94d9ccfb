#pragma once

#include "ui/controls.h"

namespace homewarden {

// The menu of the program itself.
struct ProgramMenu {
  ProgramMenu() { sspp3.entries = {&mnu_listen, &mnu_line1, &mnu_about, &mnu_line2, &mnu_exit}; }

  Menu sspp3{"Menu3"};
  MenuEntry mnu_listen{"Listen for a command"};
  MenuEntry mnu_line1{"-"};
  MenuEntry mnu_about{"About Homewarden"};
  MenuEntry mnu_line2{"-"};
  MenuEntry mnu_exit{"Exit"};
};

}  // namespace homewarden
