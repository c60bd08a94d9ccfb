#pragma once

#include "ui/controls.h"

namespace homewarden {

enum class InterfaceCondition {
  kLooking,  // for the first time
  kConnected,
  kTrouble,    // connected, and something is wrong
  kUnplugged,  // it was connected; it is looked for
  kMissing,    // none has answered; it is looked for again and again
  kRefused,    // none has answered, and there are ports that this person may not open
};

// What holds of the X10 interface, and the one thing to do about it.
struct InterfacePanel {
  InterfacePanel() { lab_notfound.visible = false; }

  Property<InterfaceCondition> condition{InterfaceCondition::kLooking};
  Label lab_interface;      // "Interface connected on port 2"
  Label lab_interfacehelp;  // what to do; "" when nothing is
  Label lab_command;        // what is to be typed into a terminal; "" when nothing is
  Button cmd_look{"Look for it now"};
  // Of the first search, or one that was asked for.
  struct Search {
    int port = 0;  // the serial port that is tried; 0 while there is no such search
    int ports = 0;
    bool operator==(const Search&) const = default;
  };
  Property<Search> search;
  Label lab_notfound;  // a search on the first page of an empty house has failed
};

}  // namespace homewarden
