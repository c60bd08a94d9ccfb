#pragma once

#include "ui/controls.h"

namespace homewarden {

// The small progress window of start-up and shutdown.
struct FrmWait : Window {
  FrmWait() : Window("Homewarden") { lab_wait.visible = false; }

  Label Label2{"Homewarden - Starting"};  // title
  Label Label1{"Please Wait"};            // progress
  Label lab_wait{"Click Here To Skip The Delay"};
};

}  // namespace homewarden
