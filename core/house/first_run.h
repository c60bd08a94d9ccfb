#pragma once

#include <string>

#include "base/operations.h"
#include "base/task.h"
#include "core/house_index.h"
#include "core/notices.h"
#include "platform/desktop.h"
#include "platform/event_loop.h"
#include "ui/first_run_panel.h"
#include "ui/home_panel.h"
#include "ui/house_panel.h"
#include "ui/interface_panel.h"
#include "ui/shared_state.h"
#include "ui/tree_view.h"
#include "x10/device_commands.h"
#include "x10/device_panel.h"
#include "x10/device_state.h"
#include "x10/presses.h"

namespace homewarden {

// From a house without rooms to a lamp that switches, on the home page: a room, a lamp in it, a
// try. What cannot be a name is told while it is typed. Begins when the house has no rooms and its
// list could be read; ends when the person opens the room, leaves with Escape or goes to another
// panel, once there is a room.
class FirstRun {
 public:
  FirstRun(FirstRunPanel& panel, InterfacePanel& interface, HomePanel& home, AddRoomPanel& add_room,
           AddDevicePanel& add_device, const Flags& flags, TreeView& tree, StatusBar& status,
           Operations& operations, EventLoop& loop, HouseIndex& house, Notices& notices,
           DeviceState& state, DeviceCommands& commands, Presses& presses, DevicePanel& devices,
           Desktop& desktop);

 private:
  void house_changed();
  void show_steps();
  void check_names();
  std::string lamp_problem() const;
  Task<void> prepare_lamp();
  void try_lamp();
  void press_lamp();
  void show_lamp();
  void open_room();
  void end();

  FirstRunPanel& panel_;
  InterfacePanel& interface_;
  AddRoomPanel& add_room_;
  AddDevicePanel& add_device_;
  const Flags& flags_;
  TreeView& tree_;
  Operations& operations_;
  EventLoop& loop_;
  HouseIndex& house_;
  Notices& notices_;
  DeviceState& state_;
  Presses& presses_;
  DevicePanel& devices_;
  std::string room_;
  std::string lamp_;  // its key; "" when there is none
};

}  // namespace homewarden
