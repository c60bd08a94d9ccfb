#include "core/house/navigation_tree.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/text.h"
#include "core/lists/choice_lists.h"
#include "ui/fixed_nodes.h"
#include "ui/key_codes.h"

namespace homewarden {

// The entries of the lists that are filled alongside the tree.
struct NavigationTree::Selectors {
  std::vector<std::string> codes;
  std::vector<std::string> labels;
  std::vector<std::string> rooms;
};

NavigationTree::NavigationTree(FrmMain& form, Operations& operations, EventLoop& loop,
                               RoomList& rooms, DeviceState& state, DevicePanel& devices)
    : form_(form),
      operations_(operations),
      loop_(loop),
      rooms_(rooms),
      state_(state),
      devices_(devices) {
  form.Tree.click.connect([this] { node_clicked(); });
  form.Tree.mouse_down.connect([this](int button) {
    if ((button & kRightButton) != 0) form_.mnuPopup.popped_up();
  });
  form.Label3.click.connect([this] { show_form(form_.frm_addroom, form_.txt_roomname); });
  form.Label4.click.connect([this] { show_form(form_.frm_adddevice, form_.txt_devname); });
  form.Label5.click.connect([this] {
    form_.show_only(form_.frm_event);
    preset_time(form_, loop_.local_time());
  });
}

void NavigationTree::loadtree() {
  const TreeView::Batch batch(form_.Tree);
  form_.Tree.root_lines = true;
  form_.lst_codes.clear();
  form_.lst_eventdevice.clear();
  form_.com_sel1.clear();
  form_.com_sel2.clear();
  form_.lab_norooms.visible = form_.lst_rooms.items.get().empty();
  for (const char* name : kFixedNodes) form_.Tree.add(nullptr, name, name);
  form_.lst_temproom.clear();

  Selectors selectors;
  std::string last_room;
  for (const std::string& text : form_.lst_rooms.items.get())
    if (const auto line = parse_list_line(text)) add_line(*line, last_room, selectors);

  form_.lst_codes.add_all(std::move(selectors.codes));
  for (ComboBox* list : {&form_.lst_eventdevice, &form_.com_sel1, &form_.com_sel2}) {
    if (!selectors.labels.empty()) list->text = selectors.labels.back();
    list->items = selectors.labels;
  }
  if (!selectors.rooms.empty()) form_.lst_temproom.text = selectors.rooms.back();
  std::stable_sort(selectors.rooms.begin(), selectors.rooms.end(), sorts_before);
  form_.lst_temproom.items = std::move(selectors.rooms);
}

void NavigationTree::add_line(const ListLine& line, std::string& last_room, Selectors& selectors) {
  if (line.room != last_room) {
    // A room that bears the name of a node that is there shares it.
    if (form_.Tree.add(nullptr, line.room, line.room)) selectors.rooms.push_back(line.room);
    last_room = line.room;
  }
  if (!line.device) return;
  TreeNode* room = form_.Tree.find(line.room);
  if (!room) return;
  // Another device of this name at this address is there: the key is taken.
  if (!form_.Tree.add(room, line.device->tree_key(), line.device->name)) return;
  selectors.codes.push_back(line.device->code());
  selectors.labels.push_back(line.device->label());
}

void NavigationTree::node_clicked() {
  const TreeNode* node = form_.Tree.selected;
  if (!node) return;
  form_.show_only(form_.frm_devices);
  if (node->parent) {
    device_node_clicked(*node);
  } else if (node->text == kHome) {
    rooms_.gohome();
  } else if (node->text == kWebServer) {
    form_.show_only(form_.Frame4);
  } else if (node->text == kEvents) {
    form_.show_only(form_.frm_event);
    preset_time(form_, loop_.local_time());
  } else if (node->text == kMacros) {
    form_.show_only(form_.frm_macros);
    preset_time(form_, loop_.local_time());
  } else if (node->text == kProfiles) {
    form_.show_only(form_.Frame5);
  } else {
    room_node_clicked(*node);
  }
}

void NavigationTree::device_node_clicked(const TreeNode& node) {
  form_.lab_nodevices.visible = false;
  rooms_.loadroom(node.parent->text);
  for (int slot = 0; slot < FrmMain::kSlots; ++slot) {
    if (form_.devicename[static_cast<std::size_t>(slot)].caption.get() != node.text) continue;
    operations_.start(devices_.deviceclicked(slot));
    return;
  }
}

void NavigationTree::room_node_clicked(const TreeNode& node) {
  rooms_.loadroom(node.text);
  empty_slots();
  form_.lab_nodevices.visible = node.children.empty();
  const int shown = std::min(FrmMain::kSlots, static_cast<int>(node.children.size()));
  for (int slot = 0; slot < shown; ++slot) {
    const auto index = static_cast<std::size_t>(slot);
    const std::string& name = node.children[index]->text;
    form_.devicename[index].caption = name;
    const std::string key = node.text + name;
    if (state_.getlaststatus(key))
      devices_.setpictureon(slot, key);
    else
      devices_.setpictureoff(slot, key);
    form_.device[index].visible = true;
  }
}

void NavigationTree::empty_slots() {
  for (auto& picture : form_.device) picture.visible = false;
  for (auto& name : form_.devicename) name.caption = std::string();
  for (auto& slider : form_.image1) slider.visible = false;
}

void NavigationTree::show_form(Frame& frame, Control& focus) {
  form_.show_only(frame);
  focus.set_focus();
}

}  // namespace homewarden
