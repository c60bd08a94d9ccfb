#pragma once

#include <string>

#include "base/json.h"
#include "base/signal.h"
#include "ui/controls.h"
#include "ui/shared_state.h"
#include "x10/device_commands.h"

namespace homewarden {

// What a program is told of the interface to the power line: what stands in the status line of the
// window, and whether a command is on its way.
class InterfaceNow {
 public:
  InterfaceNow(StatusBar& status, Flags& flags, DeviceCommands& commands);

  Json json() const;

  // It would be another one now.
  Signal<> changed;

 private:
  std::string state() const;

  StatusBar& status_;
  Flags& flags_;
  bool busy_ = false;
};

}  // namespace homewarden
