#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "automation/event_list.h"
#include "automation/once_events.h"
#include "base/task.h"
#include "core/devices.h"
#include "core/house/navigation_tree.h"
#include "core/house/renaming.h"
#include "core/house_files.h"
#include "core/house_index.h"
#include "core/lists/room_list.h"
#include "core/messages.h"
#include "core/module1.h"
#include "core/settings.h"
#include "ui/navigation_pane.h"
#include "ui/shared_state.h"
#include "x10/device_panel.h"
#include "x10/device_state.h"
#include "x10/presses.h"

namespace homewarden {

// Other names, rooms, addresses and types for what the house has already. Everything that names the
// device follows: the room list, the events of all profiles, macros, its type, id, state and level,
// what could not be sent, and presses that wait. One rename on the disk decides.
class HouseChanges {
 public:
  HouseChanges(NavigationPane& pane, Flags& flags, StatusBar& status, Messages& messages,
               Module1& module1, Settings& settings, HouseFiles& files, HouseIndex& house,
               RoomList& rooms, EventList& events, OnceEvents& once_events, DeviceState& state,
               Presses& presses, DevicePanel& devices, NavigationTree& tree);

  // Return what is wrong, in words for a person, with everything as it was; "" when it is done.
  // The names and the address must be in order by themselves; that they do not collide with others
  // of the house is looked at here. An address may be another device's too. `type` is a code.
  Task<std::string> change_device(Device from, Device to, std::string type);
  Task<std::string> rename_room(std::string from, std::string to);

 private:
  // Without a type each device keeps its own.
  Task<std::string> carry_out(std::function<Renaming(std::string_view)> make, std::string type);
  Task<std::string> rewrite(const Renaming& renaming, std::string type);
  std::string conflict(const Renaming& renaming);
  bool change_lists(const Renaming& renaming);
  std::string why_not();
  void record_new(const Renaming& renaming, const std::string& type, bool decided);
  void forget(const Renaming& renaming, bool old_ones);
  void say(std::string text);
  Task<void> show(const Renaming& renaming);

  NavigationPane& pane_;
  Flags& flags_;
  StatusBar& status_;
  Messages& messages_;
  Module1& module1_;
  Settings& settings_;
  HouseFiles& files_;
  HouseIndex& house_;
  RoomList& rooms_;
  EventList& events_;
  OnceEvents& once_events_;
  DeviceState& state_;
  Presses& presses_;
  DevicePanel& devices_;
  NavigationTree& tree_;
};

}  // namespace homewarden
