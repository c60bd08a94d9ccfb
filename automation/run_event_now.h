#pragma once

#include "automation/event_list.h"
#include "base/operations.h"
#include "base/task.h"
#include "platform/dialogs.h"
#include "ui/event_panel.h"
#include "x10/device_commands.h"

namespace homewarden {

// "Run this event now" in the menu of the event list: carries out the selected event whatever its
// time and days; a once-event stays in the list.
class RunEventNow {
 public:
  RunEventNow(EventPanel& panel, Operations& operations, Dialogs& dialogs, EventList& list,
              DeviceCommands& commands);

  // Says so when the list is empty. Does nothing when no event is selected, or when its action or
  // level is none. Returns when the command has been sent or given up.
  Task<void> run();

 private:
  EventPanel& panel_;
  Dialogs& dialogs_;
  EventList& list_;
  DeviceCommands& commands_;
};

}  // namespace homewarden
