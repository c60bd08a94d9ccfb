#include "core/house/first_run.h"

#include "base/text.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

constexpr const char* kRoomList = "rmlst.hwd";  // the notice about it
constexpr const char* kLampType = "bulb2";

}  // namespace

FirstRun::FirstRun(FirstRunPanel& panel, InterfacePanel& interface, HomePanel& home,
                   AddDevicePanel& add_device, const Flags& flags, TreeView& tree,
                   StatusBar& status, Operations& operations, EventLoop& loop, HouseIndex& house,
                   Notices& notices, DeviceState& state, DeviceCommands& commands, Presses& presses,
                   DevicePanel& devices, Desktop& desktop)
    : panel_(panel),
      add_device_(add_device),
      flags_(flags),
      tree_(tree),
      operations_(operations),
      loop_(loop),
      house_(house),
      notices_(notices),
      state_(state),
      presses_(presses),
      devices_(devices) {
  house.changed.connect([this] { house_changed(); });
  state.changed.connect([this](const StateChange&) { show_lamp(); });
  commands.sending_to.connect([this](const std::string&, bool) { show_lamp(); });
  presses.changed.connect([this](const std::string&) { show_lamp(); });
  interface.condition.changed.connect([this] { show_lamp(); });
  panel.cmd_try.click.connect([this] { try_lamp(); });
  panel.cmd_open.click.connect([this] { open_room(); });
  panel.first_run_left.connect([this] { end(); });
  panel.cmd_demo.click.connect([&status, &desktop] {
    if (!desktop.start_demo()) status.panel2 = "The demo house could not be started";
  });
  home.frm_home.visible.changed.connect([this, &home] {
    if (!home.frm_home.visible) end();
  });
}

void FirstRun::house_changed() {
  if (house_.rooms().empty()) {
    if (!notices_.of(kRoomList).empty()) return;
    room_.clear();
    lamp_.clear();
    panel_.step = FirstStep::kRoom;
    panel_.is_first_run = true;
  } else if (panel_.is_first_run && house_.devices().empty()) {
    room_ = house_.rooms().front();
    operations_.start(prepare_lamp());
  } else if (panel_.is_first_run && lamp_.empty()) {
    const Device device = house_.devices().front();
    room_ = device.room;
    lamp_ = device.key();
    panel_.step = FirstStep::kTry;
    if (flags_.connected) operations_.start(devices_.press(device));
    show_lamp();
  }
}

// When the lists of the panel have been filled anew.
Task<void> FirstRun::prepare_lamp() {
  co_await pending_events(loop_);
  panel_.lab_firstroom.caption = room_;
  add_device_.lst_temproom.text = room_;
  add_device_.lst_devicetype.text = std::string(device_type(kLampType).display_name);
  panel_.step = FirstStep::kLamp;
}

void FirstRun::try_lamp() {
  if (panel_.step == FirstStep::kLamp) {
    add_device_.lst_temproom.text = room_;
    add_device_.Command4.click();  // the rest follows when the house has it
  } else if (panel_.step == FirstStep::kTry) {
    press_lamp();
  }
}

void FirstRun::press_lamp() {
  const Device* device = house_.by_key(lamp_);
  if (!device) return;
  const auto order = state_.not_sent(lamp_);
  if (order && flags_.connected)
    presses_.repeat(*device, *order);
  else
    operations_.start(devices_.press(*device));
}

void FirstRun::show_lamp() {
  const Device* device = lamp_.empty() ? nullptr : house_.by_key(lamp_);
  if (!panel_.is_first_run || !device) return;
  std::string words = device->name;
  const auto wished = presses_.wished(lamp_);
  if (wished)
    words = (wished->on ? "Turning on " : "Turning off ") + device->name;
  else if (state_.not_sent(lamp_))
    words += " was not reached, press \"Try it\" again";
  else if (!flags_.connected && !state_.getlaststatus(lamp_))
    words += " is saved. It can be tried when the interface is connected";
  else
    words += state_.getlaststatus(lamp_) ? " is on" : " is off";
  panel_.lab_firstlamp.caption = std::move(words);
  panel_.cmd_open.caption = "Open " + room_;
  panel_.cmd_open.visible = true;
}

void FirstRun::open_room() {
  const std::string room = room_;
  end();
  if (TreeNode* node = tree_.find(room)) tree_.selected = node;
}

void FirstRun::end() {
  if (!panel_.is_first_run || house_.rooms().empty()) return;
  lamp_.clear();
  add_device_.lst_devicetype.text = std::string(device_types().front().display_name);
  panel_.cmd_open.visible = false;
  panel_.lab_firstlamp.caption = std::string();
  panel_.is_first_run = false;
}

}  // namespace homewarden
