#pragma once

#include <deque>
#include <string>

#include "base/operations.h"
#include "base/signal.h"
#include "base/task.h"
#include "platform/event_loop.h"
#include "platform/interface_control.h"
#include "ui/controls.h"
#include "x10/seen_commands.h"

namespace homewarden {

// Commands that the interface reports from the power line: a button on the wall, another
// controller. They are handled one after the other in the order in which they came.
class IncomingTraffic {
 public:
  IncomingTraffic(StatusBar& status, Operations& operations, EventLoop& loop,
                  InterfaceControl& interface_control, SeenCommands& seen);

  // Whether one has come that is not recorded yet.
  bool is_handling() const { return handling_; }

  // Raised for each command, before its device is recorded: house code, unit, X10 function. The
  // unit is 0 for a command to the whole house.
  Signal<const std::string&, int, int> seen_on_line;

 private:
  struct Command {
    std::string house;
    int unit;
    int function;
  };

  Task<void> handle_all();
  Task<void> handle(Command command);

  StatusBar& status_;
  EventLoop& loop_;
  SeenCommands& seen_;
  std::deque<Command> waiting_;
  bool handling_ = false;
};

}  // namespace homewarden
