#include "core/house/house_editor.h"

#include <algorithm>
#include <utility>
#include <variant>
#include <vector>

#include "base/flag_guard.h"
#include "base/lines.h"
#include "base/text.h"
#include "core/asking.h"
#include "core/device_ids.h"
#include "core/house/house_input.h"
#include "core/lists/file_lock.h"

namespace homewarden {
namespace {

std::string line_of(const ListLine& entry) {
  if (!entry.device) return entry.room + "~~~";
  return entry.room + "~" + entry.device->name + "~" + entry.device->code();
}

// The house as its file has it now, whatever the window shows.
HouseIndex house_in(ListFile& list, Settings& settings) {
  std::vector<std::string> lines;
  const auto content = list.content();
  LineReader reader(content ? *content : std::string_view());
  while (const auto line = reader.next()) lines.emplace_back(*line);
  HouseIndex house(settings);
  house.set_lines(lines);
  return house;
}

std::string conflict(const ListLine& entry, const HouseIndex& house) {
  return entry.device ? device_conflict(*entry.device, house) : room_conflict(entry.room, house);
}

}  // namespace

HouseEditor::HouseEditor(AddRoomPanel& room_panel, AddDevicePanel& device_panel,
                         NavigationPane& pane, Flags& flags, Operations& operations,
                         Module1& module1, Settings& settings, Dialogs& dialogs, ListFile& list,
                         RoomList& rooms, EventList& events, NavigationTree& tree)
    : room_panel_(room_panel),
      device_panel_(device_panel),
      pane_(pane),
      flags_(flags),
      module1_(module1),
      settings_(settings),
      dialogs_(dialogs),
      list_(list),
      rooms_(rooms),
      events_(events),
      tree_(tree) {
  room_panel.Command3.click.connect([this, &operations] { operations.start(add_room()); });
  device_panel.Command4.click.connect([this, &operations] { operations.start(add_device()); });
}

Task<void> HouseEditor::add_room() {
  const std::string name = room_panel_.txt_roomname.text;
  std::string wrong =
      trim_blanks(name).empty() ? "You must type in a name for room" : name_problem(name);
  if (!wrong.empty()) {
    co_await refuse(std::move(wrong));
    room_panel_.txt_roomname.set_focus();
    co_return;
  }
  Addition addition{ListLine{name, std::nullopt}, "", rooms_.view()};
  co_await carry_out(std::move(addition));
}

Task<void> HouseEditor::add_device() {
  const std::string name = device_panel_.txt_devname.text;
  if (trim_blanks(name).empty()) {
    std::string text = "You must type in a name for this device";
    co_await refuse(std::move(text));
    device_panel_.txt_devname.set_focus();
    co_return;
  }
  const auto checked = check_device(
      device_panel_.lst_temproom.text.get(), name, device_panel_.lst_housecode.text.get(),
      device_panel_.lst_device.text.get(), device_panel_.lst_temproom.items);
  if (const auto* wrong = std::get_if<std::string>(&checked)) {
    std::string text = *wrong;
    co_await refuse(std::move(text));
    co_return;
  }
  const Device device = std::get<Device>(checked);
  Addition addition{ListLine{device.room, device},
                    type_code(device_panel_.lst_devicetype.text.get()), rooms_.view()};
  co_await carry_out(std::move(addition));
}

Task<void> HouseEditor::carry_out(Addition addition) {
  const auto same = [&addition](const Addition& other) {
    return line_of(other.entry) == line_of(addition.entry) && other.type == addition.type;
  };
  if (std::any_of(additions_.begin(), additions_.end(), same)) co_return;
  additions_.push_back(std::move(addition));
  if (adding_) co_return;  // whoever carries out the first goes on with it
  const FlagGuard adding(adding_);
  const EventList::Closed closed(events_);
  while (!additions_.empty()) co_await carry_out_next();
}

Task<void> HouseEditor::carry_out_next() {
  struct Done {
    std::deque<Addition>& additions;
    ~Done() { additions.pop_front(); }
  };
  const Done done{additions_};
  const Addition& addition = additions_.front();
  const Outcome outcome = co_await add_to_list(addition);
  if (outcome == Outcome::kAdded) {
    co_await show_added(addition);
  } else if (outcome == Outcome::kNotWritten) {
    std::string text =
        "Sorry, the room and device list rmlst.hwd could not be written, so nothing was added. "
        "Please check the disk, the permissions of the file and that no other program has it open.";
    co_await refuse(std::move(text));
  } else if (rooms_.view() == addition.seen_from) {
    name_box(addition).set_focus();
  }
}

// Looks at the house once more whenever the files were out of its hands: while a person reads a
// question, what is asked about may come or go.
Task<HouseEditor::Outcome> HouseEditor::add_to_list(const Addition& addition) {
  std::string accepted;  // the device with which the address is shared
  for (;;) {
    std::string wrong;
    std::string shared;
    {
      const FileLock lock = co_await lock_files(flags_, module1_);
      if (list_.exists() && !list_.content()) co_return Outcome::kNotWritten;
      const HouseIndex house = house_in(list_, settings_);
      wrong = conflict(addition.entry, house);
      if (wrong.empty() && addition.entry.device)
        if (const Device* other = at_same_address(*addition.entry.device, house))
          shared = "\"" + other->name + "\" in the room \"" + other->room + "\"";
      if (wrong.empty() && shared == accepted) {
        const bool written = co_await write(addition);
        co_return written ? Outcome::kAdded : Outcome::kNotWritten;
      }
    }
    if (!wrong.empty()) {
      co_await refuse(std::move(wrong));
      co_return Outcome::kRefused;
    }
    if (!shared.empty()) {
      const bool wanted = co_await may_share(*addition.entry.device, shared);
      if (!wanted) co_return Outcome::kRefused;
    }
    accepted = std::move(shared);
  }
}

Task<bool> HouseEditor::may_share(const Device& device, std::string other) {
  std::string text = other + " has this address (" + device.house_code +
                     std::to_string(device.unit) + ") already. Do you want to add \"" +
                     device.name + "\" all the same?";
  std::string title = "Same address";
  const bool wanted = co_await ask(dialogs_, std::move(text), std::move(title), Answer::kNo);
  co_return wanted;
}

Task<bool> HouseEditor::write(const Addition& addition) {
  if (!addition.entry.device) co_return list_.add(line_of(addition.entry));
  const bool written = co_await write_device(*addition.entry.device, addition.type);
  co_return written;
}

// The type first, so that a stop leaves no device without it.
Task<bool> HouseEditor::write_device(const Device& device, const std::string& type) {
  const std::string old_type = settings_.read("type", device.key(), "");
  settings_.write("type", device.key(), type);
  DeviceIds::forget(settings_, device.key());  // what a kill has left of another device
  co_await module1_.stored(RegistryRoot::kCurrentUser);
  if (list_.add(line_of(ListLine{device.room, device}))) co_return true;
  if (old_type.empty())
    settings_.remove("type", device.key());
  else
    settings_.write("type", device.key(), old_type);
  co_return false;
}

// The next name may have been typed meanwhile, or another panel opened: then the person goes on
// there.
Task<void> HouseEditor::show_added(const Addition& addition) {
  co_await rooms_.loadlists();
  rooms_.cleartree(pane_.Tree);
  tree_.loadtree();
  TextBox& box = name_box(addition);
  const std::string& name =
      addition.entry.device ? addition.entry.device->name : addition.entry.room;
  if (box.text.get() != name) co_return;
  box.text = std::string();
  if (rooms_.view() != addition.seen_from) co_return;
  rooms_.gohome();
  added(addition.entry);
}

TextBox& HouseEditor::name_box(const Addition& addition) {
  return addition.entry.device ? device_panel_.txt_devname : room_panel_.txt_roomname;
}

Task<void> HouseEditor::refuse(std::string text) {
  std::string title = "Error!";
  co_await tell(dialogs_, std::move(text), std::move(title), MessageIcon::kExclamation);
}

}  // namespace homewarden
