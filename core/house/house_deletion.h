#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "automation/event_list.h"
#include "base/operations.h"
#include "base/task.h"
#include "core/house/navigation_tree.h"
#include "core/house_files.h"
#include "core/lists/room_list.h"
#include "core/module1.h"
#include "core/settings.h"
#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "ui/frm_main.h"
#include "x10/device_state.h"

namespace homewarden {

// Deleting the room or the device that the tree has selected.
class HouseDeletion {
 public:
  HouseDeletion(FrmMain& form, Operations& operations, EventLoop& loop, Module1& module1,
                Settings& settings, Dialogs& dialogs, HouseFiles& files, RoomList& rooms,
                EventList& events, DeviceState& state, NavigationTree& tree);

  // Ctrl+D (4) and Delete (127) delete the selected item after questions; Back Space (8) says how;
  // other keys do nothing. A device takes its events along when the person says so; what is stored
  // of deleted devices goes too.
  Task<void> deletetree(int KeyCode);

 private:
  // What a deletion takes out of the room list.
  struct Lines {
    std::size_t found = 0;
    std::set<std::string> keys;  // of devices, lower-case
  };

  Task<void> delete_top_item(std::string name);
  Task<void> delete_room(std::string room);
  Task<void> delete_device(std::string room, std::string device);
  // True with the lines that were deleted.
  Task<bool> rewrite_for_room(std::string room, Lines& lines);
  Task<bool> rewrite_for_device(std::string room, std::string device, bool with_events,
                                Lines& lines);
  Task<void> remove_events(std::string room, std::string device, std::size_t found);
  Task<bool> ask(const char* text, const char* title);
  bool carry_out(const Lines& lines);
  Lines lines_of(const ListFile::Choice& choice);
  void forget(const Lines& lines);
  Task<void> finish(bool deleted, const Lines& lines);
  void say(std::string text);

  FrmMain& form_;
  EventLoop& loop_;
  Module1& module1_;
  Settings& settings_;
  Dialogs& dialogs_;
  HouseFiles& files_;
  RoomList& rooms_;
  EventList& events_;
  DeviceState& state_;
  NavigationTree& tree_;
};

}  // namespace homewarden
