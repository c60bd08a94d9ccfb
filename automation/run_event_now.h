#pragma once

#include "automation/event_list.h"
#include "base/operations.h"
#include "base/task.h"
#include "platform/dialogs.h"
#include "ui/frm_main.h"
#include "x10/device_commands.h"

namespace homewarden {

// "Run this event now" in the menu of the event list: sends the command of the selected event and
// nothing else.
class RunEventNow {
 public:
  RunEventNow(FrmMain& form, Operations& operations, Dialogs& dialogs, EventList& list,
              DeviceCommands& commands);

  Task<void> run();

 private:
  FrmMain& form_;
  Dialogs& dialogs_;
  EventList& list_;
  DeviceCommands& commands_;
};

}  // namespace homewarden
