#include "core/house/first_run.h"

#include <utility>
#include <variant>

#include "base/text.h"
#include "core/house/house_input.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

constexpr const char* kRoomList = "rmlst.hwd";  // the notice about it
constexpr const char* kLampType = "bulb2";

}  // namespace

FirstRun::FirstRun(FirstRunPanel& panel, InterfacePanel& interface, HomePanel& home,
                   AddRoomPanel& add_room, AddDevicePanel& add_device, const Flags& flags,
                   TreeView& tree, StatusBar& status, Operations& operations, EventLoop& loop,
                   HouseIndex& house, Notices& notices, DeviceState& state,
                   DeviceCommands& commands, Presses& presses, DevicePanel& devices,
                   Desktop& desktop)
    : panel_(panel),
      interface_(interface),
      add_room_(add_room),
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
  state.changed.connect([this](const StateChange& change) {
    if (change.sent && !lamp_.empty() && change.key == lamp_) panel_.lamp_switched = true;
    show_steps();
    show_lamp();
  });
  commands.sending_to.connect([this](const std::string&, bool) { show_lamp(); });
  presses.changed.connect([this](const std::string&) { show_lamp(); });
  interface.condition.changed.connect([this] {
    show_steps();
    show_lamp();
  });
  panel.step.changed.connect([this] { show_steps(); });
  for (Property<std::string>* text : {&add_room.txt_roomname.text, &add_device.txt_devname.text,
                                      &add_device.lst_housecode.text, &add_device.lst_device.text})
    text->changed.connect([this] { check_names(); });
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
    panel_.lamp_switched = false;
    panel_.step = FirstStep::kRoom;
    panel_.is_first_run = true;
    show_steps();
    show_lamp();
    check_names();
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

void FirstRun::show_steps() {
  const bool connected = interface_.condition == InterfaceCondition::kConnected;
  std::string text;
  switch (panel_.step.get()) {
    case FirstStep::kRoom:
      text = std::string("Your house has no rooms yet. ") + (connected ? "Two" : "Three") +
             " steps to the first lamp that switches.";
      break;
    case FirstStep::kLamp:
      text = std::string(connected ? "One more step" : "Two more steps") +
             " to the first lamp that switches.";
      break;
    case FirstStep::kTry:
      if (!connected)
        text = "One more step to the first lamp that switches: connect the interface.";
      else if (!panel_.lamp_switched)
        text = "One more step: press \"Try it\" and see the lamp.";
      else
        text = "That is all. Rooms and devices can be added any time.";
      break;
  }
  panel_.lab_firststeps.caption = std::move(text);
}

void FirstRun::check_names() {
  if (!panel_.is_first_run) return;
  const std::string& room = add_room_.txt_roomname.text;
  std::string wrong = name_problem(room);
  panel_.lab_roomwrong.caption = wrong.empty() ? room_conflict(room, house_) : std::move(wrong);
  panel_.lab_lampwrong.caption = panel_.step == FirstStep::kLamp ? lamp_problem() : std::string();
}

std::string FirstRun::lamp_problem() const {
  const std::string& name = add_device_.txt_devname.text;
  if (trim_blanks(name).empty()) return "";
  const auto checked = check_device(room_, name, add_device_.lst_housecode.text.get(),
                                    add_device_.lst_device.text.get(), house_.rooms());
  const auto* wrong = std::get_if<std::string>(&checked);
  return wrong ? *wrong : device_conflict(std::get<Device>(checked), house_);
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
  panel_.lab_lamphint.caption = "Set the wheels of its module to " +
                                (device ? device->house_code + std::to_string(device->unit)
                                        : std::string("the address shown here")) +
                                ", press Try it, and see the lamp.";
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
