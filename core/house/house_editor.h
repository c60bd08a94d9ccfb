#pragma once

#include <string>

#include "automation/event_list.h"
#include "base/operations.h"
#include "base/task.h"
#include "core/devices.h"
#include "core/house/navigation_tree.h"
#include "core/list_file.h"
#include "core/lists/room_list.h"
#include "core/module1.h"
#include "core/settings.h"
#include "platform/dialogs.h"
#include "ui/frm_main.h"

namespace homewarden {

// The two panels that rooms and devices are added on. What is no name, room or address is refused
// with a message, and nothing is written.
class HouseEditor {
 public:
  HouseEditor(FrmMain& form, Operations& operations, Module1& module1, Settings& settings,
              Dialogs& dialogs, ListFile& list, RoomList& rooms, EventList& events,
              NavigationTree& tree);

  Task<void> add_room();
  Task<void> add_device();

 private:
  bool add_with_type(const Device& device);
  Task<void> tell_not_written();
  Task<void> rebuild();
  Task<void> refuse(std::string text);

  FrmMain& form_;
  Module1& module1_;
  Settings& settings_;
  Dialogs& dialogs_;
  ListFile& list_;
  RoomList& rooms_;
  EventList& events_;
  NavigationTree& tree_;
  bool adding_ = false;
};

}  // namespace homewarden
