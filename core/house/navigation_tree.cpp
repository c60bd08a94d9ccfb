#include "core/house/navigation_tree.h"

#include <algorithm>
#include <utility>

#include "base/flag_guard.h"
#include "core/lists/choice_lists.h"
#include "ui/fixed_nodes.h"
#include "ui/key_codes.h"

namespace homewarden {
namespace {

// Devices of one name and address in two rooms: the second one's node needs a key of its own.
std::string second_key(const Device& device) {
  return device.room + "~" + device.tree_key();
}

// The key that a device's node would have if it were the first of its name and address.
std::string without_room(const TreeNode& node) {
  const std::string room = node.parent->key + "~";
  const bool is_second = std::count(node.key.begin(), node.key.end(), '~') > 2;
  return is_second && node.key.starts_with(room) ? node.key.substr(room.size()) : node.key;
}

}  // namespace

NavigationTree::NavigationTree(FrmMain& form, Operations& operations, EventLoop& loop,
                               RoomList& rooms, HouseIndex& house, DevicePanel& devices,
                               Speech& speech)
    : form_(form),
      operations_(operations),
      loop_(loop),
      rooms_(rooms),
      house_(house),
      devices_(devices),
      speech_(speech),
      selectors_(form, form, form, form) {
  form.Tree.selected.changed.connect([this] {
    const TreeNode* node = form_.Tree.selected;
    if (!node || quiet_) return;
    selected_key_ = node->parent ? without_room(*node) : node->key;
    selected_room_ = node->parent ? node->parent->key : std::string();
    show_selected();
  });
  form.Tree.click.connect([this] { node_pressed(); });
  form.Tree.mouse_down.connect([this](int button) {
    if ((button & kRightButton) != 0 && form_.Tree.selected.get()) form_.mnuPopup.popped_up();
  });
  form.Label3.click.connect([this] { show_form(form_.frm_addroom, form_.txt_roomname); });
  form.Label4.click.connect([this] { show_form(form_.frm_adddevice, form_.txt_devname); });
  form.Label5.click.connect([this] {
    form_.show_only(form_.frm_event);
    show_present_time();
  });
  follow_panel(form.frm_home, kHome);
  follow_panel(form.frm_event, kEvents);
  follow_panel(form.frm_macros, kMacros);
  follow_panel(form.Frame4, kWebServer);
  follow_panel(form.Frame5, kProfiles);
  // It has no node: none is marked, also in a tree that is built anew.
  form.frm_settings.visible.changed.connect([this] {
    if (!form_.frm_settings.visible) return;
    selected_key_.clear();
    selected_room_.clear();
  });
}

void NavigationTree::loadtree() {
  {
    const TreeView::Batch batch(form_.Tree);
    form_.Tree.root_lines = true;
    form_.lab_norooms.visible = form_.lst_rooms.items.get().empty();
    speech_.begin_commands();
    for (const char* name : kFixedNodes) form_.Tree.add(nullptr, name, name);
    // A room that bears the name of a node that is there shares it.
    for (const std::string& room : house_.rooms()) form_.Tree.add(nullptr, room, room);
    for (const Device& device : house_.devices()) {
      add_device(device);
      speech_.add_commands(device);
    }
  }
  selectors_.fill(house_);
  select_again();
}

void NavigationTree::add_device(const Device& device) {
  TreeNode* room = form_.Tree.find(device.room);
  if (!room || room->parent) return;
  if (form_.Tree.add(room, device.tree_key(), device.name)) return;
  form_.Tree.add(room, second_key(device), device.name);  // not for a line that stands there twice
}

void NavigationTree::select_again() {
  const FlagGuard quiet(quiet_);
  form_.Tree.selected = selected_before();
  if (form_.frm_devices.visible) devices_.show_again();
}

void NavigationTree::follow(const Device& from, const Device& to) {
  if (selected_room_ != from.room || selected_key_ != from.tree_key()) return;
  const bool stays = to.room == from.room;
  selected_key_ = stays ? to.tree_key() : from.room;
  if (!stays) selected_room_.clear();
}

void NavigationTree::follow_room(const std::string& from, const std::string& to) {
  if (selected_room_ == from) selected_room_ = to;
  if (selected_room_.empty() && selected_key_ == from) selected_key_ = to;
}

// A device's node below the room of then, or else that room. The key is no help alone: it goes to
// another room when that has a device of the same name and address first.
TreeNode* NavigationTree::selected_before() const {
  if (selected_room_.empty()) return form_.Tree.find(selected_key_);
  TreeNode* room = form_.Tree.find(selected_room_);
  if (!room) return nullptr;
  for (const auto& node : room->children)
    if (without_room(*node) == selected_key_) return node.get();
  return room;
}

// A panel that is shown by a link, or by the program, has its node selected.
void NavigationTree::follow_panel(Frame& frame, const char* name) {
  frame.visible.changed.connect([this, &frame, name] {
    TreeNode* node = form_.Tree.find(name);
    if (!frame.visible || !node || quiet_) return;
    const FlagGuard quiet(quiet_);
    selected_key_ = name;
    selected_room_.clear();
    form_.Tree.selected = node;
  });
}

// The finder leads away and back while an event is edited: that one keeps its time.
void NavigationTree::show_present_time() {
  if (!form_.cmd_cancel.visible) preset_time(form_, loop_.local_time());
}

void NavigationTree::show_selected() {
  const TreeNode& node = *form_.Tree.selected.get();
  const FlagGuard quiet(quiet_);
  if (node.parent) {
    show_room(node.parent->text);
    if (const Device* device = device_of(node)) devices_.turn_to(*device);
  } else if (node.text == kHome) {
    rooms_.gohome();
  } else if (node.text == kWebServer) {
    form_.show_only(form_.Frame4);
  } else if (node.text == kEvents) {
    form_.show_only(form_.frm_event);
    show_present_time();
  } else if (node.text == kMacros) {
    form_.show_only(form_.frm_macros);
    show_present_time();
  } else if (node.text == kProfiles) {
    form_.show_only(form_.Frame5);
  } else {
    show_room(node.text);
  }
}

void NavigationTree::show_room(const std::string& room) {
  devices_.show_room(room);
  form_.show_only(form_.frm_devices);
}

void NavigationTree::node_pressed() {
  const TreeNode* node = form_.Tree.selected;
  if (!node) return;
  show_selected();
  const Device* device = node->parent ? device_of(*node) : nullptr;
  if (device) operations_.start(devices_.press(*device));
}

const Device* NavigationTree::device_of(const TreeNode& node) const {
  for (const Device* device : house_.devices_in(node.parent->text))
    if (node.key == device->tree_key() || node.key == second_key(*device)) return device;
  return nullptr;
}

void NavigationTree::show_form(Frame& frame, Control& focus) {
  form_.show_only(frame);
  focus.set_focus();
}

}  // namespace homewarden
