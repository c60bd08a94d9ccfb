#pragma once

#include <optional>
#include <string>

#include "base/operations.h"
#include "base/task.h"
#include "core/house/house_changes.h"
#include "core/house/house_deletion.h"
#include "core/house/house_editor.h"
#include "core/house/navigation_tree.h"
#include "core/house_index.h"
#include "core/lists/room_list.h"
#include "core/messages.h"
#include "core/settings.h"
#include "ui/house_panel.h"
#include "ui/navigation_pane.h"
#include "ui/panel_stack.h"
#include "x10/device_panel.h"

namespace homewarden {

// What a person does to the house from the page of a room: the menus of the room and its cards, the
// form beside them, and the way to a new device.
class RoomEditing {
 public:
  RoomEditing(HousePanel& panel, AddRoomPanel& adding_room, AddDevicePanel& adding,
              PanelStack& panels, NavigationPane& pane, Operations& operations, Settings& settings,
              HouseIndex& house, RoomList& rooms, DevicePanel& devices,
              const NavigationTree& navigation, HouseEditor& editor, HouseChanges& changes,
              HouseDeletion& deletion, Messages& messages);

 private:
  void edit_device(const Device& device, CardOrder what);
  void edit_room();
  void edit_node();
  void close();
  void show_hint();
  void look_at_house();
  void add_device();
  void added(const ListLine& entry);
  void go_back();
  Task<void> save();
  Task<std::string> save_room(std::string from, std::string name);
  Task<std::string> save_device(Device from);
  Task<void> move(Device device, std::string room);

  HousePanel& panel_;
  ChangePanel& form_;
  AddDevicePanel& adding_;
  PanelStack& panels_;
  TreeView& tree_;
  Settings& settings_;
  HouseIndex& house_;
  RoomList& rooms_;
  DevicePanel& devices_;
  const NavigationTree& navigation_;
  HouseChanges& changes_;
  HouseDeletion& deletion_;
  Messages& messages_;
  std::optional<Device> edited_;  // nothing: the room
  std::string room_;              // as the form was opened
  std::string added_from_;  // the room whose page led to the panel for new devices; "" for none
  bool saving_ = false;
};

}  // namespace homewarden
