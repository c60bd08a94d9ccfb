#pragma once

#include "ui/controls.h"

namespace homewarden {

enum class FirstStep {
  kRoom,  // no room yet
  kLamp,  // no device yet
  kTry,   // a lamp to switch
};

// The home page of a house that is being begun. It uses the boxes of the panels that add rooms and
// devices.
struct FirstRunPanel {
  FirstRunPanel() { cmd_open.visible = false; }

  Property<bool> is_first_run;
  Property<FirstStep> step{FirstStep::kRoom};
  Property<bool> lamp_switched;  // a command has reached the lamp
  Label lab_firststeps;          // how many steps are left: connect, name a room, add a lamp
  Label lab_lamphint;            // to which address its module is to be set
  Label lab_roomwrong;           // why what stands in the box can be no name; "" when it can
  Label lab_lampwrong;
  Label lab_firstroom;  // the room that has been added
  Label lab_firstlamp;  // what became of the lamp: "Table Lamp is on"
  Button cmd_try{"Try it"};
  Button cmd_open{"Open the room"};
  Button cmd_demo{"Look at the demo house first"};
  Signal<> first_run_left;  // Escape
};

}  // namespace homewarden
