#pragma once

#include <string>

#include "base/operations.h"
#include "core/devices.h"
#include "core/lists/room_list.h"
#include "platform/event_loop.h"
#include "ui/frm_main.h"
#include "x10/device_panel.h"
#include "x10/device_state.h"

namespace homewarden {

// The navigation tree, and the panels that its nodes show.
class NavigationTree {
 public:
  NavigationTree(FrmMain& form, Operations& operations, EventLoop& loop, RoomList& rooms,
                 DeviceState& state, DevicePanel& devices);

  // Builds the tree and the lists that devices and rooms are chosen from, of `lst_rooms`. The tree
  // is emptied by the caller.
  void loadtree();

 private:
  struct Selectors;

  void add_line(const ListLine& line, std::string& last_room, Selectors& selectors);
  void node_clicked();
  void device_node_clicked(const TreeNode& node);
  void room_node_clicked(const TreeNode& node);
  void empty_slots();
  void show_form(Frame& frame, Control& focus);  // the home page's links

  FrmMain& form_;
  Operations& operations_;
  EventLoop& loop_;
  RoomList& rooms_;
  DeviceState& state_;
  DevicePanel& devices_;
};

}  // namespace homewarden
