#include "core/house/house_editor.h"

#include <utility>
#include <variant>

#include "base/flag_guard.h"
#include "base/text.h"
#include "core/devices.h"
#include "core/house/house_input.h"
#include "core/lists/file_lock.h"

namespace homewarden {
namespace {

std::string type_code(const std::string& display_name) {
  for (const DeviceType& type : device_types())
    if (type.display_name == display_name) return std::string(type.code);
  return std::string(device_types().front().code);
}

}  // namespace

HouseEditor::HouseEditor(FrmMain& form, Operations& operations, Module1& module1,
                         Settings& settings, Dialogs& dialogs, ListFile& list, RoomList& rooms,
                         EventList& events, NavigationTree& tree)
    : form_(form),
      module1_(module1),
      settings_(settings),
      dialogs_(dialogs),
      list_(list),
      rooms_(rooms),
      events_(events),
      tree_(tree) {
  form.Command3.click.connect([this, &operations] { operations.start(add_room()); });
  form.Command4.click.connect([this, &operations] { operations.start(add_device()); });
}

Task<void> HouseEditor::add_room() {
  const std::string name = form_.txt_roomname.text;
  std::string wrong =
      trim_blanks(name).empty() ? "You must type in a name for room" : room_name_problem(name);
  if (!wrong.empty()) {
    co_await refuse(std::move(wrong));
    form_.txt_roomname.set_focus();
    co_return;
  }
  if (adding_) co_return;
  const FlagGuard adding(adding_);
  const EventList::Closed closed(events_);
  bool added = false;
  {
    const FileLock lock = co_await lock_files(form_, module1_);
    added = list_.add(name + "~~~");
  }
  if (!added) {
    co_await tell_not_written();
    co_return;
  }
  co_await rebuild();
  // The next name may have been typed meanwhile.
  if (form_.txt_roomname.text.get() == name) form_.txt_roomname.text = std::string();
  rooms_.gohome();
}

Task<void> HouseEditor::add_device() {
  const std::string name = form_.txt_devname.text;
  if (trim_blanks(name).empty()) {
    std::string text = "You must type in a name for this device";
    co_await refuse(std::move(text));
    form_.txt_devname.set_focus();
    co_return;
  }
  const auto checked =
      check_device(form_.lst_temproom.text.get(), name, form_.lst_housecode.text.get(),
                   form_.lst_device.text.get(), form_.lst_temproom.items);
  if (const auto* wrong = std::get_if<std::string>(&checked)) {
    std::string text = *wrong;
    co_await refuse(std::move(text));
    co_return;
  }
  const Device device = std::get<Device>(checked);
  if (adding_) co_return;
  const FlagGuard adding(adding_);
  const EventList::Closed closed(events_);
  bool added = false;
  {
    const FileLock lock = co_await lock_files(form_, module1_);
    added = add_with_type(device);
  }
  if (!added) {
    co_await tell_not_written();
    co_return;
  }
  co_await rebuild();
  if (form_.txt_devname.text.get() == name) form_.txt_devname.text = std::string();
  rooms_.gohome();
}

// The type first, so that a stop leaves no device without it.
bool HouseEditor::add_with_type(const Device& device) {
  const std::string old_type = settings_.read("type", device.key(), "");
  settings_.write("type", device.key(), type_code(form_.lst_devicetype.text));
  if (list_.add(device.room + "~" + device.name + "~" + device.code())) return true;
  if (old_type.empty())
    settings_.remove("type", device.key());
  else
    settings_.write("type", device.key(), old_type);
  return false;
}

Task<void> HouseEditor::tell_not_written() {
  std::string text =
      "Sorry, the room and device list rmlst.hwd could not be written, so nothing was added. "
      "Please check the disk and the permissions of the file.";
  co_await refuse(std::move(text));
}

Task<void> HouseEditor::rebuild() {
  co_await rooms_.loadlists();
  rooms_.cleartree(form_.Tree);
  tree_.loadtree();
}

Task<void> HouseEditor::refuse(std::string text) {
  Message message{std::move(text), "Error!", MessageIcon::kExclamation, MessageButtons::kOk};
  co_await dialogs_.message_box(std::move(message));
}

}  // namespace homewarden
