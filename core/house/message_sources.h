#pragma once

#include "automation/event_list.h"
#include "automation/profile_switch.h"
#include "core/house_index.h"
#include "core/messages.h"
#include "platform/dialogs.h"
#include "ui/event_panel.h"
#include "x10/device_commands.h"

namespace homewarden {

// Keeps what boxes without a question have said, so that it can be read again.
class NotedDialogs : public Dialogs {
 public:
  NotedDialogs(Dialogs& dialogs, Messages& messages) : dialogs_(dialogs), messages_(messages) {}

  Task<Answer> message_box(Message message) override;
  Task<std::optional<std::string>> input_box(Question question) override;

 private:
  Dialogs& dialogs_;
  Messages& messages_;
};

// From now on commands that do not get through are told.
void tell_failed_commands(DeviceCommands& commands, const HouseIndex& house, Messages& messages);

// Another profile is told, and the offer to undo the deletion of an event, which the page of the
// events shows, stands in the list as long as it is made.
void note_events(EventPanel& panel, EventList& events, const ProfileSwitch& profiles,
                 Messages& messages);

}  // namespace homewarden
