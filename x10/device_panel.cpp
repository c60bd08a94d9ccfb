#include "x10/device_panel.h"

#include <utility>

#include "base/text.h"
#include "ui/busy_window.h"

namespace homewarden {
namespace {

constexpr int kToggle = 100;
constexpr int kOffLevel = 20;

std::size_t slot(int Index) {
  return static_cast<std::size_t>(Index);
}

}  // namespace

DevicePanel::DevicePanel(FrmMain& form, Operations& operations, HouseIndex& house,
                         DeviceState& state, DeviceCommands& commands, Dialogs& dialogs,
                         SoundPlayer& sounds, std::filesystem::path folder)
    : form_(form),
      house_(house),
      state_(state),
      commands_(commands),
      dialogs_(dialogs),
      sounds_(sounds),
      folder_(std::move(folder)) {
  for (int i = 0; i < FrmMain::kSlots; ++i) {
    const auto click = [this, &operations, i] { operations.start(deviceclicked(i)); };
    form.device[slot(i)].click.connect(click);
    form.devicename[slot(i)].click.connect(click);
    form.image1[slot(i)].moved.connect(
        [this, &operations, i] { operations.start(slider_moved(i)); });
  }
}

Task<void> DevicePanel::deviceclicked(int Index) {
  int level = 0;
  co_await deviceclicked(Index, level);
}

Task<void> DevicePanel::deviceclicked(int Index, int& adim) {
  if (adim == 0) adim = kToggle;
  if (!form_.connected) {
    Message message{
        "Sorry, you need to connect to the X10 computer interface before you can do this action.",
        "not possible!", MessageIcon::kExclamation, MessageButtons::kOk};
    co_await dialogs_.message_box(std::move(message));
    co_return;
  }

  const std::string room = shown_room(form_.Tree);
  const std::string name = form_.devicename[slot(Index)].caption;
  const auto line = find_line(room, name);
  if (!line) {
    std::string text = "Sorry, couldn`t find this device in the device list.";
    co_await show_error(std::move(text));
    co_return;
  }
  const auto entry = parse_list_line(*line);
  if (!entry || !entry->device || !entry->device->has_address()) {
    std::string text = "Sorry, " + name + " has no address on the power line (" + *line +
                       "). House codes are A to P, units 1 to 16.";
    co_await show_error(std::move(text));
    co_return;
  }
  const Device device = *entry->device;
  const std::string key = room + name;

  const BusyWindow busy(form_);
  if (adim == kToggle) {
    const bool was_on = state_.getlaststatus(key);
    playfile(folder_ / "1b1.wav");
    if (was_on) {
      co_await commands_.turnoff(device.house_code, device.unit);
      int off_level = 0;
      state_.setstatus(key, "off", off_level);
      setpictureoff(Index, key);
      move_slider(Index, kOffLevel);
      playfile(folder_ / "1b2.wav");
      co_return;
    }
  }
  co_await commands_.turnon(device.house_code, device.unit, adim);
  state_.setstatus(key, "on", adim);
  setpictureon(Index, key);
  if (adim == kToggle) move_slider(Index, kToggle);
  playfile(folder_ / "1b2.wav");
}

Task<void> DevicePanel::slider_moved(int Index) {
  if (form_.filebusy) co_return;
  Slider& slider = form_.image1[slot(Index)];
  const int position = slider.value;
  const BusyWindow busy(form_);
  playfile(folder_ / "1b2.wav");
  int level = slider.value;
  co_await deviceclicked(Index, level);
  slider.value = position;
}

void DevicePanel::setpictureon(int slot, const std::string& fullname) {
  set_picture(slot, fullname, true);
}

void DevicePanel::setpictureoff(int slot, const std::string& fullname) {
  set_picture(slot, fullname, false);
}

void DevicePanel::set_picture(int index, const std::string& fullname, bool on) {
  const DeviceType& type = house_.type_of(fullname);
  Picture& picture = form_.device[slot(index)];
  Slider& slider = form_.image1[slot(index)];
  picture.file = (folder_ / device_picture(type, on)).string();
  if (type.dimmable) slider.value = on ? state_.level(fullname) : kOffLevel;
  slider.visible = type.dimmable;
  picture.tool_tip = on ? "Click me to turn this device OFF" : "Click me to turn this device ON";
}

void DevicePanel::playfile(const std::filesystem::path& FileName) {
  sounds_.play(FileName);
}

std::optional<std::string> DevicePanel::find_line(const std::string& room,
                                                  const std::string& device) const {
  const std::string wanted = room + "~" + device + "~";
  for (const std::string& line : form_.lst_rooms.items.get())
    if (contains_ignoring_case(line, wanted)) return line;
  return std::nullopt;
}

Task<void> DevicePanel::show_error(std::string text) {
  Message message{std::move(text), "Error", MessageIcon::kCritical, MessageButtons::kOk};
  co_await dialogs_.message_box(std::move(message));
}

void DevicePanel::move_slider(int Index, int value) {
  // filebusy keeps the slider handler quiet; it may be held by somebody who works on the files.
  const bool was_busy = std::exchange(form_.filebusy, true);
  form_.image1[slot(Index)].value = value;
  form_.filebusy = was_busy;
}

}  // namespace homewarden
