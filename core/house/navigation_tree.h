#pragma once

#include <string>

#include "base/operations.h"
#include "core/house/device_selectors.h"
#include "core/house_index.h"
#include "core/lists/room_list.h"
#include "platform/event_loop.h"
#include "ui/frm_main.h"
#include "voice/speech.h"
#include "x10/device_panel.h"

namespace homewarden {

// The navigation tree, and the panels that its nodes show. What is selected is what is shown,
// however it came to be selected; only a press on a device's node switches it.
class NavigationTree {
 public:
  NavigationTree(FrmMain& form, Operations& operations, EventLoop& loop, RoomList& rooms,
                 HouseIndex& house, DevicePanel& devices, Speech& speech);

  // Builds the tree, the lists that devices and rooms are chosen from and what can be said to the
  // house, of the house index. The tree is emptied by the caller; what was selected then is
  // selected again, and the panel that is shown stays.
  void loadtree();

  // Before loadtree(): what was selected under its old name is selected under the new one. For a
  // device that moved, the room that it left.
  void follow(const Device& from, const Device& to);
  void follow_room(const std::string& from, const std::string& to);

  // The device of a node below a room; nullptr when the house has it no more.
  const Device* device_of(const TreeNode& node) const;

 private:
  void add_device(const Device& device);
  void select_again();
  TreeNode* selected_before() const;
  void follow_panel(Frame& frame, const char* name);
  void show_selected();
  void show_present_time();
  void show_room(const std::string& room);
  void node_pressed();
  void show_form(Frame& frame, Control& focus);  // the home page's links

  FrmMain& form_;
  Operations& operations_;
  EventLoop& loop_;
  RoomList& rooms_;
  HouseIndex& house_;
  DevicePanel& devices_;
  Speech& speech_;
  DeviceSelectors selectors_;
  std::string selected_key_;   // of the node selected last; of a device without its room
  std::string selected_room_;  // key of its room when it is a device
  bool quiet_ = false;         // the selection follows what is shown
};

}  // namespace homewarden
