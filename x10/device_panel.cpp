#include "x10/device_panel.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/text.h"
#include "core/asking.h"

namespace homewarden {
namespace {

constexpr int kToggle = 100;
constexpr int kOffLevel = 20;

std::size_t at(int Index) {
  return static_cast<std::size_t>(Index);
}

}  // namespace

DevicePanel::DevicePanel(HousePanel& panel, const Flags& flags, Operations& operations,
                         HouseIndex& house, DeviceState& state, DeviceCommands& commands,
                         Presses& presses, Dialogs& dialogs, SoundPlayer& sounds,
                         std::filesystem::path folder)
    : panel_(panel),
      flags_(flags),
      house_(house),
      state_(state),
      presses_(presses),
      dialogs_(dialogs),
      sounds_(sounds),
      folder_(std::move(folder)) {
  for (int i = 0; i < HousePanel::kSlots; ++i) {
    const auto click = [this, &operations, i] { operations.start(deviceclicked(i)); };
    panel.device[at(i)].click.connect(click);
    panel.devicename[at(i)].click.connect(click);
    panel.image1[at(i)].moved.connect(
        [this, &operations, i] { operations.start(slider_moved(i)); });
    panel.slid_off[at(i)].connect([this, &operations, i] { operations.start(slid_off(i)); });
    panel.lab_notsent[at(i)].click.connect(
        [this, &operations, i] { operations.start(try_again(i)); });
  }
  panel.line_is_up.changed.connect([this] { show_counts(); });
  panel.page_chosen.connect([this](int page) { show_page(page); });
  panel.cmd_roomoff.click.connect([this, &operations] { operations.start(turn_room_off()); });
  state.changed.connect([this](const StateChange& change) {
    show_device(change.key);
    show_counts();
    if (change.source == Source::kWindow) playfile(folder_ / "1b2.wav");
  });
  commands.sending_to.connect([this](const std::string& key, bool begins) {
    sending_to_ = begins ? key : std::string();
    show_device(key);
  });
  presses.changed.connect([this](const std::string& key) { show_device(key); });
  state.changed_elsewhere.connect([this] { show_again(); });
}

void DevicePanel::show_room(const std::string& room) {
  if (room != room_) page_ = 0;
  room_ = room;
  panel_.lab_room.caption = room;
  fill_slots();
}

void DevicePanel::turn_to(const Device& device) {
  const auto devices = house_.devices_in(room_);
  const auto found = std::find_if(devices.begin(), devices.end(),
                                  [&device](const Device* one) { return *one == device; });
  if (found != devices.end())
    show_page(static_cast<int>(found - devices.begin()) / HousePanel::kSlots);
}

void DevicePanel::focus_on(const Device& device) {
  turn_to(device);
  for (int i = 0; i < HousePanel::kSlots; ++i)
    if (device_in(i) == device) panel_.device[at(i)].set_focus();
}

void DevicePanel::follow_room(const std::string& from, const std::string& to) {
  if (room_ == from) room_ = to;
}

std::optional<Device> DevicePanel::device_in(int Index) const {
  const Slot& slot = slots_[at(Index)];
  return slot.key.empty() ? std::nullopt : std::optional(slot.device);
}

void DevicePanel::show_page(int page) {
  if (page == page_) return;
  page_ = page;
  fill_slots();
}

void DevicePanel::fill_slots() {
  const auto devices = house_.devices_in(room_);
  const int count = static_cast<int>(devices.size());
  page_ = std::clamp(page_, 0, std::max(0, count - 1) / HousePanel::kSlots);
  panel_.lab_nodevices.visible = devices.empty();
  panel_.page = page_;
  for (int i = 0; i < HousePanel::kSlots; ++i) {
    const int number = page_ * HousePanel::kSlots + i;
    if (number < count)
      fill(i, *devices[at(number)]);
    else
      empty(i);
  }
  show_counts();
}

void DevicePanel::show_counts() {
  const auto devices = house_.devices_in(room_);
  std::vector<RoomPage> pages;
  int on = 0;
  int number = 0;
  for (const Device* device : devices) {
    if (number++ % HousePanel::kSlots == 0) pages.push_back({number, number, 0});
    pages.back().last = number;
    if (!state_.getlaststatus(device->key())) continue;
    ++on;
    ++pages.back().on;
  }
  if (pages.empty()) pages.emplace_back();
  panel_.pages = std::move(pages);
  panel_.lab_count.caption =
      (on == 0 ? std::string("All off")
               : std::to_string(on) + " of " + std::to_string(number) + " on") +
      (panel_.line_is_up ? "" : ", as far as known");
  panel_.lab_count.visible = number > 0;
  panel_.cmd_roomoff.visible = number > 0;
  panel_.cmd_roomoff.enabled = on > 0;
}

void DevicePanel::show_again() {
  show_room(room_);
}

void DevicePanel::fill(int Index, const Device& device) {
  const std::string key = device.key();
  // A move of the slider that is under way was meant for the device that goes.
  if (slots_[at(Index)].key != key) panel_.image1[at(Index)].put_back();
  slots_[at(Index)] = {device, key, &house_.type_of(key)};
  panel_.devicename[at(Index)].caption = device.name;
  show_slot(Index);
  panel_.device[at(Index)].visible = true;
}

void DevicePanel::empty(int Index) {
  slots_[at(Index)] = {};
  panel_.device[at(Index)].visible = false;
  panel_.devicename[at(Index)].caption = std::string();
  panel_.image1[at(Index)].visible = false;
  panel_.lab_notsent[at(Index)].visible = false;
  panel_.cardface[at(Index)] = CardFace();
}

void DevicePanel::show_slot(int Index) {
  const Slot& slot = slots_[at(Index)];
  const std::string& key = slot.key;
  panel_.lab_notsent[at(Index)].visible = !presses_.waits(key) && state_.not_sent(key).has_value();
  set_picture(Index, key, *slot.type, state_.getlaststatus(key));
  panel_.cardface[at(Index)] = face_of(slot);
}

CardFace DevicePanel::face_of(const Slot& slot) {
  CardFace face;
  face.on = state_.getlaststatus(slot.key);
  face.level = face.on ? state_.level(slot.key) : 0;
  face.dimmable = slot.type->dimmable;
  if (slot.device.has_address())
    face.address = slot.device.house_code + std::to_string(slot.device.unit);
  if (!slot.key.empty() && slot.key == sending_to_)
    face.state = CardState::kSending;
  else if (presses_.waits(slot.key))
    face.state = CardState::kWaiting;
  if (const auto order = presses_.wished(slot.key)) face.wished = order->on ? order->level : 0;
  face.wishes_level = presses_.wished_level(slot.key).has_value();
  return face;
}

void DevicePanel::show_device(const std::string& key) {
  for (int i = 0; i < HousePanel::kSlots; ++i)
    if (!key.empty() && equals_ignoring_case(slots_[at(i)].key, key)) show_slot(i);
}

Task<bool> DevicePanel::find_device(int Index, Device& device) {
  const Slot slot = slots_[at(Index)];
  const Device* found = slot.key.empty() ? nullptr : house_.same_as(slot.device);
  if (found) {
    device = *found;
    co_return true;
  }
  co_await tell_error(dialogs_, "Sorry, couldn`t find this device in the device list.");
  co_return false;
}

Task<void> DevicePanel::deviceclicked(int Index, int adim) {
  Device device;
  const bool found = co_await find_device(Index, device);
  if (!found) co_return;
  if (adim == 0 || adim == kToggle) {
    co_await press(std::move(device));
    co_return;
  }
  co_await set_level(std::move(device), adim);
}

Task<void> DevicePanel::press(Device device) {
  const bool possible = co_await can_switch(device);
  if (!possible) co_return;
  playfile(folder_ / "1b1.wav");
  presses_.toggle(device);
}

Task<void> DevicePanel::order(Device device, DeviceOrder order) {
  const bool possible = co_await can_switch(device);
  if (!possible) co_return;
  playfile(folder_ / "1b1.wav");
  if (order.on && order.level < kToggle)
    presses_.set_level(device, order.level);
  else
    presses_.repeat(device, order);
}

Task<bool> DevicePanel::can_switch(Device device) {
  if (!flags_.connected) {
    std::string text =
        "Sorry, you need to connect to the X10 computer interface before you can do this action.";
    co_await tell(dialogs_, std::move(text), "not possible!", MessageIcon::kExclamation);
    co_return false;
  }
  if (device.has_address()) co_return true;
  std::string text = "Sorry, " + device.name + " has no address on the power line (" +
                     device.label() + "). House codes are A to P, units 1 to 16.";
  co_await tell_error(dialogs_, std::move(text));
  co_return false;
}

Task<void> DevicePanel::slider_moved(int Index) {
  const int level = panel_.image1[at(Index)].value;
  playfile(folder_ / "1b2.wav");
  Device device;
  const bool found = co_await find_device(Index, device);
  if (!found) co_return;
  co_await set_level(std::move(device), level);
}

bool DevicePanel::will_be_on(const std::string& key) {
  const auto order = presses_.wished(key);
  return order ? order->on : state_.getlaststatus(key);
}

Task<void> DevicePanel::slid_off(int Index) {
  playfile(folder_ / "1b2.wav");
  Device device;
  const bool found = co_await find_device(Index, device);
  bool possible = found && will_be_on(device.key());
  if (possible) possible = co_await can_switch(device);
  if (possible && will_be_on(device.key()))
    presses_.toggle(device);
  else
    panel_.image1[at(Index)].put_back();
}

Task<void> DevicePanel::turn_room_off() {
  std::vector<Device> devices;
  for (const Device* device : house_.devices_in(room_))
    if (device->has_address()) devices.push_back(*device);
  if (devices.empty()) co_return;
  const bool possible = co_await can_switch(devices.front());
  if (!possible) co_return;
  playfile(folder_ / "1b1.wav");
  for (const Device& device : devices) {
    if (!house_.same_as(device)) continue;  // the message may have been read for a while
    const auto missed = state_.not_sent(device.key());
    if (will_be_on(device.key()))
      presses_.toggle(device);
    else if (missed && !missed->on && !presses_.wished(device.key()))
      presses_.repeat(device, *missed);
  }
}

// What cannot be done puts the slider back.
Task<void> DevicePanel::set_level(Device device, int level) {
  const bool possible = co_await can_switch(device);
  if (possible) presses_.set_level(device, level);
  show_device(device.key());
}

Task<void> DevicePanel::try_again(int Index) {
  Device device;
  const bool found = co_await find_device(Index, device);
  if (!found) co_return;
  const auto order = state_.not_sent(device.key());
  const bool possible = co_await can_switch(device);
  if (order && possible) presses_.repeat(device, *order);
}

void DevicePanel::setpictureon(int slot, const std::string& fullname) {
  set_picture(slot, fullname, house_.type_of(fullname), true);
}

void DevicePanel::setpictureoff(int slot, const std::string& fullname) {
  set_picture(slot, fullname, house_.type_of(fullname), false);
}

void DevicePanel::set_picture(int index, const std::string& fullname, const DeviceType& type,
                              bool on) {
  Picture& picture = panel_.device[at(index)];
  Slider& slider = panel_.image1[at(index)];
  picture.file = (folder_ / device_picture(type, on)).string();
  if (type.dimmable) {
    const int recorded = on ? state_.level(fullname) : kOffLevel;
    slider.value = presses_.wished_level(without_blanks(fullname)).value_or(recorded);
  }
  slider.visible = type.dimmable;
  picture.tool_tip = on ? "Click me to turn this device OFF" : "Click me to turn this device ON";
}

void DevicePanel::playfile(const std::filesystem::path& FileName) {
  sounds_.play(FileName);
}

}  // namespace homewarden
