#pragma once

#include <optional>
#include <set>
#include <string>

#include "automation/event_list.h"
#include "base/operations.h"
#include "base/task.h"
#include "core/house/deletion_undo.h"
#include "core/house/house_removal.h"
#include "core/house/navigation_tree.h"
#include "core/house_files.h"
#include "core/house_index.h"
#include "core/lists/room_list.h"
#include "core/module1.h"
#include "core/settings.h"
#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "ui/controls.h"
#include "ui/house_panel.h"
#include "ui/navigation_pane.h"
#include "ui/shared_state.h"
#include "x10/device_state.h"

namespace homewarden {

// Deleting the room or the device that the tree has selected.
class HouseDeletion {
 public:
  HouseDeletion(Window& window, NavigationPane& pane, HousePanel& room_panel, Flags& flags,
                StatusBar& status, Operations& operations, EventLoop& loop, Module1& module1,
                Settings& settings, Dialogs& dialogs, HouseFiles& files, HouseIndex& house,
                RoomList& rooms, EventList& events, DeviceState& state, NavigationTree& tree,
                DeletionUndo& undo);

  // Ctrl+D (4), Back Space (8) and Delete (127) delete the selected item after questions; other
  // keys say so and do nothing. On a fixed node they show its panel, unless a room shares it; Home
  // and Events are never a room. Nothing happens when no node is selected. Events and macros go
  // along when the person says so; what is stored of deleted devices goes too. All of it can be
  // brought back (DeletionUndo).
  Task<void> deletetree(int KeyCode);

  using Item = HouseRemoval::Item;
  // The same for something that need not be selected.
  Task<void> delete_item(Item item);

 private:
  // What a person has decided.
  struct Wishes {
    bool events = false;
    bool macros = false;
  };
  enum class Outcome { kDeleted, kNotThere, kFailed };
  struct Result {
    Outcome outcome = Outcome::kFailed;
    std::set<std::string> keys;  // of the devices, lower-case
    DeletedItem deleted = {};
  };

  // Nothing when the item is to stay.
  Task<std::optional<Wishes>> ask_wishes(Item item);
  Task<bool> ask_about(std::string text, std::string title, std::string description);
  Task<void> delete_room(Item item, Wishes wishes);
  Task<void> delete_device(Item item, Wishes wishes);
  Task<Result> rewrite_for_room(Item item, Wishes wishes);
  Task<Result> rewrite_for_device(Item item, Wishes wishes);
  Outcome decide(const HouseRemoval& removal, Wishes wishes);
  DeletedItem remember(const Item& item, const HouseRemoval& removal, Wishes wishes);
  Outcome carry_out(const HouseRemoval& removal, DeletedItem& deleted);
  Task<void> tell_found(const char* what, std::string name, std::size_t count);
  Task<void> finish(Result result, RoomList::View seen_from, Item item);
  void say_end(Outcome outcome, const Item& item);
  void forget(const std::set<std::string>& keys);
  void say(std::string text);

  Window& window_;
  NavigationPane& pane_;
  HousePanel& room_panel_;
  Flags& flags_;
  StatusBar& status_;
  EventLoop& loop_;
  Module1& module1_;
  Settings& settings_;
  Dialogs& dialogs_;
  HouseFiles& files_;
  HouseIndex& house_;
  RoomList& rooms_;
  EventList& events_;
  DeviceState& state_;
  NavigationTree& tree_;
  DeletionUndo& undo_;
};

}  // namespace homewarden
