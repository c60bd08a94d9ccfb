#pragma once

#include <deque>
#include <string>

#include "automation/event_list.h"
#include "base/operations.h"
#include "base/signal.h"
#include "base/task.h"
#include "core/devices.h"
#include "core/house/navigation_tree.h"
#include "core/list_file.h"
#include "core/lists/room_list.h"
#include "core/module1.h"
#include "core/settings.h"
#include "platform/dialogs.h"
#include "ui/house_panel.h"
#include "ui/navigation_pane.h"
#include "ui/shared_state.h"

namespace homewarden {

// The two panels that rooms and devices are added on. What is no name, room or address, and what
// the house has already, is refused with a message, and nothing is written.
class HouseEditor {
 public:
  HouseEditor(AddRoomPanel& room_panel, AddDevicePanel& device_panel, NavigationPane& pane,
              Flags& flags, Operations& operations, Module1& module1, Settings& settings,
              Dialogs& dialogs, ListFile& list, RoomList& rooms, EventList& events,
              NavigationTree& tree);

  // Take what stands in the boxes now. What is saved while another addition waits for the files is
  // carried out after it, and the call returns at once; saving the same once more meanwhile counts
  // once.
  Task<void> add_room();
  Task<void> add_device();

  // Raised when a room or a device is in the list and whoever added it has been taken home.
  Signal<const ListLine&> added;

 private:
  struct Addition {
    ListLine entry;
    std::string type;  // of a device: its code
    RoomList::View seen_from;
  };
  enum class Outcome { kAdded, kRefused, kNotWritten };

  Task<void> carry_out(Addition addition);
  Task<void> carry_out_next();
  Task<Outcome> add_to_list(const Addition& addition);
  Task<bool> write(const Addition& addition);
  Task<bool> write_device(const Device& device, const std::string& type);
  Task<bool> may_share(const Device& device, std::string other);
  Task<void> show_added(const Addition& addition);
  TextBox& name_box(const Addition& addition);
  Task<void> refuse(std::string text);

  AddRoomPanel& room_panel_;
  AddDevicePanel& device_panel_;
  NavigationPane& pane_;
  Flags& flags_;
  Module1& module1_;
  Settings& settings_;
  Dialogs& dialogs_;
  ListFile& list_;
  RoomList& rooms_;
  EventList& events_;
  NavigationTree& tree_;
  std::deque<Addition> additions_;  // the first one is being carried out
  bool adding_ = false;
};

}  // namespace homewarden
