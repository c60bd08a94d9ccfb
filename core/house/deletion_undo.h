#pragma once

#include <set>
#include <string>
#include <vector>

#include "automation/event_list.h"
#include "automation/profile_switch.h"
#include "base/operations.h"
#include "base/task.h"
#include "core/house/house_removal.h"
#include "core/house/navigation_tree.h"
#include "core/house_files.h"
#include "core/house_index.h"
#include "core/line_places.h"
#include "core/lists/room_list.h"
#include "core/messages.h"
#include "core/module1.h"
#include "core/settings.h"
#include "ui/navigation_pane.h"
#include "ui/shared_state.h"
#include "x10/device_state.h"

namespace homewarden {

// All that a deletion took away.
struct DeletedItem {
  struct Stored {
    Device device;
    std::string type;  // "" for none
    std::string id;    // of DeviceIds
    DeviceState::Record state;
  };

  HouseRemoval::Item item;
  std::vector<LineInPlace> rooms;
  std::set<std::string> beside;  // all lines of the room list at that time
  std::vector<LineInPlace> events;
  std::vector<LineInPlace> macros;
  std::string profile;  // whose events they are
  std::vector<Stored> stored;
};

// Brings a deleted room or device back: its lines of all lists, each where it stood, its type,
// id, state and level. One rename on the disk decides. Events go to the profile that they were
// taken from, also when another one is active by then. What has been added anew meanwhile stays as
// it is and comes only once.
class DeletionUndo {
 public:
  DeletionUndo(NavigationPane& pane, Flags& flags, StatusBar& status, Operations& operations,
               Module1& module1, Settings& settings, HouseFiles& files, HouseIndex& house,
               RoomList& rooms, EventList& events, ProfileSwitch& profiles, DeviceState& state,
               NavigationTree& tree, Messages& messages);

  // What is stored of the devices whose lines went, and the active profile. To be called before
  // that is forgotten, and while the files are locked.
  void remember(DeletedItem& deleted);
  // A message with an offer to undo it, which comes again, with the reason, when it could not be
  // done: because another device has the name by then, or the disk does not want to.
  void offer(DeletedItem deleted);

 private:
  Task<void> put_back(DeletedItem deleted);
  Task<std::string> carry_out(const DeletedItem& deleted);
  Task<std::string> rewrite(const DeletedItem& deleted, const std::string& room_list);
  void store(const DeletedItem& deleted, const HouseIndex& there);
  void forget(const DeletedItem& deleted, const HouseIndex& there);
  bool add_lines(const DeletedItem& deleted);
  std::string shared_addresses(const DeletedItem& deleted) const;

  NavigationPane& pane_;
  Flags& flags_;
  StatusBar& status_;
  Operations& operations_;
  Module1& module1_;
  Settings& settings_;
  HouseFiles& files_;
  HouseIndex& house_;
  RoomList& rooms_;
  EventList& events_;
  ProfileSwitch& profiles_;
  DeviceState& state_;
  NavigationTree& tree_;
  Messages& messages_;
};

}  // namespace homewarden
