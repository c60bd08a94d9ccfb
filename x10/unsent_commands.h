#pragma once

#include <set>
#include <string>
#include <unordered_set>
#include <vector>

#include "base/operations.h"
#include "base/task.h"
#include "core/house_index.h"
#include "platform/dialogs.h"
#include "platform/registry.h"
#include "ui/controls.h"
#include "x10/device_commands.h"
#include "x10/device_state.h"

namespace homewarden {

// Counts what could not be sent, and says in the status bar which it is, until a command to the
// same device gets through or a person dismisses it: later commands to others do not wipe it out.
// Devices of the house count by the mark that is recorded of them, also after a restart; addresses
// without one as long as the program runs.
class UnsentCommands {
 public:
  UnsentCommands(StatusBar& status, Operations& operations, EventLoop& loop, HouseIndex& house,
                 DeviceState& state, DeviceCommands& commands, Dialogs& dialogs,
                 Registry& registry);

 private:
  void begin_to_read(Operations& operations);
  Task<void> read_marks();
  void tried(const SwitchTarget& target, bool sent);
  void show();
  std::vector<std::string> names();
  Task<void> ask_to_dismiss();

  StatusBar& status_;
  EventLoop& loop_;
  HouseIndex& house_;
  DeviceState& state_;
  Dialogs& dialogs_;
  std::unordered_set<std::string> known_;  // keys of the devices whose mark has been read
  std::set<std::string> devices_;          // keys of those that were not reached
  std::set<std::string> addresses_;        // "A9"
  std::string summary_;                    // "" when all was sent
  Operations::Id reading_ = 0;
  bool asking_ = false;
};

}  // namespace homewarden
