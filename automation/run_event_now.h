#pragma once

#include "automation/event_list.h"
#include "base/operations.h"
#include "base/task.h"
#include "platform/dialogs.h"
#include "ui/event_panel.h"
#include "x10/device_commands.h"

namespace homewarden {

// Carries out an event at once whatever its time and days: the selected one with "Run this event
// now" in the menu of the event list, and what stands in the boxes with "Run now". A once-event
// stays in the list.
class RunEventNow {
 public:
  RunEventNow(EventPanel& panel, Operations& operations, Dialogs& dialogs, EventList& list,
              DeviceCommands& commands);

  // Says so when the list is empty. Does nothing when no event is selected, or when its action or
  // level is none. Returns when the command has been sent or given up.
  Task<void> run();
  // What is no event yet is refused with the message that Save has for it.
  Task<void> run_boxes();

 private:
  Task<void> carry_out(EventRecord event);

  EventPanel& panel_;
  Dialogs& dialogs_;
  EventList& list_;
  DeviceCommands& commands_;
};

}  // namespace homewarden
