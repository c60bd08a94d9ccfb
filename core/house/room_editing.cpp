#include "core/house/room_editing.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <variant>
#include <vector>

#include "base/flag_guard.h"
#include "base/text.h"
#include "core/house/house_input.h"
#include "ui/fixed_nodes.h"

namespace homewarden {
namespace {

std::string trimmed(const std::string& text) {
  return std::string(trim_blanks(text));
}

void choose(ComboBox& list, const ComboBox& like, const std::string& text) {
  list.items = like.items.get();
  list.text = text;
}

}  // namespace

RoomEditing::RoomEditing(HousePanel& panel, AddRoomPanel& adding_room, AddDevicePanel& adding,
                         PanelStack& panels, NavigationPane& pane, Operations& operations,
                         Settings& settings, HouseIndex& house, RoomList& rooms,
                         DevicePanel& devices, const NavigationTree& navigation,
                         HouseEditor& editor, HouseChanges& changes, HouseDeletion& deletion,
                         Messages& messages)
    : panel_(panel),
      form_(panel.change),
      adding_(adding),
      panels_(panels),
      tree_(pane.Tree),
      settings_(settings),
      house_(house),
      rooms_(rooms),
      devices_(devices),
      navigation_(navigation),
      changes_(changes),
      deletion_(deletion),
      messages_(messages) {
  panel.card_order.connect([this, &operations](int slot, CardOrder what) {
    const auto device = devices_.device_in(slot);
    if (!device) return;
    if (what == CardOrder::kRemove)
      operations.start(deletion_.delete_item({device->room, device->name, device->tree_key()}));
    else
      edit_device(*device, what);
  });
  panel.moved_to.connect([this, &operations](int slot, const std::string& room) {
    if (const auto device = devices_.device_in(slot)) operations.start(move(*device, room));
  });
  pane.Tree.rename_asked.connect([this] { edit_node(); });
  pane.mnu_renametree.click.connect([this] { edit_node(); });
  panel.mnu_renameroom.click.connect([this] { edit_room(); });
  panel.mnu_deleteroom.click.connect([this, &operations] {
    operations.start(deletion_.delete_item({devices_.room(), "", ""}));
  });
  panel.cmd_adddevice.click.connect([this] { add_device(); });
  form_.cmd_change.click.connect([this, &operations] { operations.start(save()); });
  form_.cmd_cancelchange.click.connect([this] { close(); });
  for (Property<std::string>* text : {&form_.lst_changecode.text, &form_.lst_changenumber.text})
    text->changed.connect([this] { show_hint(); });
  // What is edited must be what is seen.
  panel.lab_room.caption.changed.connect([this] {
    if (devices_.room() != room_) close();
    look_at_house();
  });
  panel.frm_devices.visible.changed.connect([this] {
    if (!panel_.frm_devices.visible) close();
  });
  house.changed.connect([this] { look_at_house(); });
  editor.added.connect([this](const ListLine& entry) { added(entry); });
  adding.device_abandoned.connect([this] { go_back(); });
  adding_room.room_abandoned.connect([this] { rooms_.gohome(); });
}

// Which rooms there are to move to, and which address is free.
void RoomEditing::look_at_house() {
  std::vector<std::string> rooms = house_.rooms();
  std::erase(rooms, panel_.lab_room.caption.get());
  panel_.other_rooms = std::move(rooms);
  const auto free = next_free_address(house_, panel_.lab_room.caption.get());
  panel_.lab_nextaddress.caption =
      free ? "Next free address: " + free->first + " " + std::to_string(free->second)
           : "All 256 addresses are in use";
}

void RoomEditing::edit_device(const Device& device, CardOrder what) {
  if (saving_) return;
  close();
  edited_ = device;
  room_ = device.room;
  form_.of_room = false;
  form_.lab_change.caption =
      what == CardOrder::kRename ? std::string("Rename device") : std::string("Change device");
  form_.txt_changename.text = device.name;
  form_.lst_changeroom.items = house_.rooms();
  form_.lst_changeroom.text = device.room;
  choose(form_.lst_changecode, adding_.lst_housecode, device.house_code);
  choose(form_.lst_changenumber, adding_.lst_device, std::to_string(device.unit));
  choose(form_.lst_changetype, adding_.lst_devicetype,
         std::string(house_.type_of(device.key()).display_name));
  show_hint();
  form_.frm_change.visible = true;
  if (what == CardOrder::kRename)
    form_.txt_changename.set_focus();
  else
    form_.lst_changecode.set_focus();
}

void RoomEditing::edit_room() {
  if (saving_) return;
  close();
  room_ = devices_.room();
  form_.of_room = true;
  form_.lab_change.caption = std::string("Rename room");
  form_.txt_changename.text = room_;
  form_.lab_changehint.visible = false;
  form_.frm_change.visible = true;
  form_.txt_changename.set_focus();
}

// Another panel may be shown, and another page of the room.
void RoomEditing::edit_node() {
  const TreeNode* node = tree_.selected;
  if (!node || !tree_.enabled || saving_) return;
  const std::string room = node->parent ? node->parent->text : node->text;
  const bool is_panel = std::count(std::begin(kFixedNodes), std::end(kFixedNodes), room) > 0;
  const Device* device = node->parent ? navigation_.device_of(*node) : nullptr;
  if (is_panel || (node->parent && !device)) return;
  devices_.show_room(room);
  panels_.show_only(panel_.frm_devices);
  if (!device) return edit_room();
  devices_.turn_to(*device);
  edit_device(*device, CardOrder::kRename);
}

void RoomEditing::close() {
  if (saving_) return;
  form_.frm_change.visible = false;
  form_.lab_changewrong.visible = false;
  edited_.reset();
}

// Two lamps may share an address on purpose.
void RoomEditing::show_hint() {
  const auto unit = to_integer16(form_.lst_changenumber.text.get());
  const Device* other = nullptr;
  if (edited_ && unit) {
    const std::string code = to_lower(trim_blanks(form_.lst_changecode.text.get()));
    for (const Device& device : house_.devices())
      if (device != *edited_ && device.unit == *unit && to_lower(device.house_code) == code)
        other = &device;
  }
  if (other)
    form_.lab_changehint.caption =
        other->name + " in " + other->room + " has this address too: both are switched together.";
  form_.lab_changehint.visible = other != nullptr;
}

Task<void> RoomEditing::save() {
  if (saving_ || !form_.frm_change.visible) co_return;
  const std::string name = edited_ ? edited_->room + ", " + edited_->name : room_;
  std::string problem;
  {
    const FlagGuard saving(saving_);
    form_.cmd_change.enabled = false;
    if (edited_)
      problem = co_await save_device(*edited_);
    else
      problem = co_await save_room(room_, trimmed(form_.txt_changename.text));
    form_.cmd_change.enabled = true;
  }
  if (problem.empty()) {
    const auto changed = edited_;
    close();
    // The list is sorted: it may be on another page now.
    if (changed && panel_.frm_devices.visible) devices_.focus_on(*changed);
    co_return;
  }
  form_.lab_changewrong.caption = problem;
  form_.lab_changewrong.visible = true;
  if (panel_.frm_devices.visible && devices_.room() == room_) co_return;
  // Whoever has left the form would never hear of it.
  messages_.fail(name + " was not changed: " + problem);
  close();
}

Task<std::string> RoomEditing::save_room(std::string from, std::string name) {
  if (name.empty()) co_return "You must type in a name for room";
  if (name == from) co_return "";
  std::string problem = name_problem(name);
  if (!problem.empty()) co_return problem;
  room_ = name;
  problem = co_await changes_.rename_room(from, name);
  if (!problem.empty()) room_ = from;
  co_return problem;
}

Task<std::string> RoomEditing::save_device(Device from) {
  const std::string name = trimmed(form_.txt_changename.text);
  if (name.empty()) co_return "You must type in a name for this device";
  const auto checked =
      check_device(form_.lst_changeroom.text.get(), name, form_.lst_changecode.text.get(),
                   form_.lst_changenumber.text.get(), house_.rooms());
  if (const auto* wrong = std::get_if<std::string>(&checked)) co_return *wrong;
  const Device to = std::get<Device>(checked);
  std::string type = type_code(form_.lst_changetype.text.get());
  if (to == from && type == house_.type_of(from.key()).code) co_return "";
  std::string problem = co_await changes_.change_device(from, to, std::move(type));
  if (problem.empty()) edited_ = to;
  co_return problem;
}

Task<void> RoomEditing::move(Device device, std::string room) {
  Device to = device;
  to.room = room;
  std::string type = settings_.read("type", device.key(), "");
  std::string problem = co_await changes_.change_device(device, std::move(to), std::move(type));
  if (problem.empty()) co_return;
  // In the form a person can mend it.
  if (panel_.frm_devices.visible && house_.same_as(device) && devices_.room() == device.room) {
    edit_device(device, CardOrder::kChange);
    form_.lst_changeroom.text = room;
    form_.lab_changewrong.caption = problem;
    form_.lab_changewrong.visible = true;
  } else {
    messages_.fail(device.room + ", " + device.name + " was not moved to " + room + ": " + problem);
  }
}

void RoomEditing::add_device() {
  const std::string room = devices_.room();
  panels_.show_only(adding_.frm_adddevice);
  adding_.lst_temproom.text = room;
  if (const auto free = next_free_address(house_, room)) {
    adding_.lst_housecode.text = free->first;
    adding_.lst_device.text = std::to_string(free->second);
  }
  added_from_ = room;
  adding_.txt_devname.set_focus();
}

// Whoever came from a room goes back to it, where the new device is.
void RoomEditing::added(const ListLine& entry) {
  if (!entry.device || entry.device->room != added_from_) return;
  go_back();
  devices_.focus_on(*entry.device);
}

void RoomEditing::go_back() {
  TreeNode* room = added_from_.empty() ? nullptr : tree_.find(added_from_);
  added_from_.clear();
  rooms_.gohome();  // the room may be selected all the time
  if (room) tree_.selected = room;
}

}  // namespace homewarden
