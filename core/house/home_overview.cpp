#include "core/house/home_overview.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "base/text.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

// How long a chip stays whose device went off, and "Turn all off" can be undone.
constexpr std::chrono::minutes kStays{1};

std::string heading_of(std::size_t on, bool has_devices) {
  if (!has_devices) return "No devices yet";
  if (on == 0) return "Everything is off";
  return std::to_string(on) + (on == 1 ? " device is on" : " devices are on");
}

bool is_under_way(const HomeChip& chip) {
  return chip.state == ChipState::kWaiting || chip.state == ChipState::kSending;
}

}  // namespace

HomeOverview::HomeOverview(HomePanel& home, InterfacePanel& interface, const Flags& flags,
                           TreeView& tree, ProgramTimers& timers, Operations& operations,
                           EventLoop& loop, HouseIndex& house, DeviceState& state,
                           DeviceCommands& commands, Presses& presses, DevicePanel& devices,
                           std::filesystem::path folder)
    : home_(home),
      flags_(flags),
      operations_(operations),
      loop_(loop),
      house_(house),
      state_(state),
      presses_(presses),
      devices_(devices),
      folder_(std::move(folder)) {
  house.changed.connect([this] { show_soon(); });
  interface.condition.changed.connect([this] { show_soon(); });
  state.changed.connect([this](const StateChange&) { show_soon(); });
  state.changed_elsewhere.connect([this] { show_soon(); });
  presses.changed.connect([this](const std::string&) { show_soon(); });
  commands.sending_to.connect([this](const std::string& key, bool begins) {
    sending_to_ = begins ? key : std::string();
    show_soon();
  });
  timers.timetimer.tick.connect([this] { forget_old(); });
  home.frm_home.visible.changed.connect([this] {
    if (!home_.frm_home.visible) return;
    went_off_.clear();
    home_.chips = std::vector<HomeChip>();
    show();
  });
  home.chip_pressed.connect([this](const std::string& key) { press(key); });
  home.cmd_alloff.click.connect([this] { undo_.empty() ? press_all_off() : take_back(); });
  home.tile_pressed.connect([&tree](const std::string& room) {
    if (TreeNode* node = tree.find(room)) tree.selected = node;
  });
}

// A page that is not shown is filled when it comes up.
void HomeOverview::show_soon() {
  if (is_due_ || !home_.frm_home.visible) return;
  is_due_ = true;
  operations_.start(show_later());
}

Task<void> HomeOverview::show_later() {
  co_await pending_events(loop_);
  is_due_ = false;
  show();
}

void HomeOverview::show() {
  std::vector<RoomTile> tiles;
  std::unordered_map<std::string, std::size_t> places;
  for (const std::string& room : house_.rooms()) {
    places[room] = tiles.size();
    tiles.push_back({room, {}});
  }
  std::map<std::string, int> before;
  for (const HomeChip& chip : home_.chips.get()) before[chip.key] = chip.level;
  std::vector<HomeChip> chips;
  std::size_t on = 0;
  std::size_t hidden = 0;
  bool stays_on = false;  // when all that waits has been carried out
  for (const Device& device : house_.devices()) {
    HomeChip chip = chip_of(device);
    if (chip.level > 0) ++on;
    if (final_level(chip) > 0) stays_on = true;
    tiles[places[device.room]].on.push_back(chip.level > 0);
    if (chip.level > 0)
      went_off_.erase(chip.key);
    else if (before.contains(chip.key) && before[chip.key] > 0)
      went_off_[chip.key] = loop_.uptime();
    if (!belongs_here(chip)) continue;
    if (chips.size() < HomePanel::kMostChips)
      chips.push_back(std::move(chip));
    else if (chip.level > 0)
      ++hidden;
  }
  home_.tiles = std::move(tiles);
  home_.chips = std::move(chips);
  home_.lab_morechips.caption = "and " + std::to_string(hidden) + " more";
  home_.lab_morechips.visible = hidden > 0;
  home_.lab_home.caption = heading_of(on, !house_.devices().empty());
  show_button(stays_on);
}

// What was switched off can be taken back until something is on again.
void HomeOverview::show_button(bool stays_on) {
  if (stays_on) undo_.clear();
  home_.cmd_alloff.caption = undo_.empty() ? "Turn all off" : "Undo";
  home_.cmd_alloff.visible = stays_on || !undo_.empty();
  home_.cmd_alloff.enabled = flags_.connected.get();
}

HomeChip HomeOverview::chip_of(const Device& device) {
  HomeChip chip;
  chip.key = device.key();
  chip.name = device.name;
  chip.room = device.room;
  const DeviceType& type = house_.type_of(chip.key);
  chip.dimmable = type.dimmable;
  chip.level = state_.getlaststatus(chip.key) ? state_.level(chip.key) : 0;
  chip.picture = (folder_ / device_picture(type, chip.level > 0)).string();
  if (chip.key == sending_to_)
    chip.state = ChipState::kSending;
  else if (presses_.waits(chip.key))
    chip.state = ChipState::kWaiting;
  auto order = presses_.wished(chip.key);
  if (!order && chip.state == ChipState::kIdle) {
    order = state_.not_sent(chip.key);
    if (order) chip.state = ChipState::kNotSent;
  }
  if (order) chip.wished = order->on ? order->level : 0;
  return chip;
}

int HomeOverview::final_level(const HomeChip& chip) const {
  return is_under_way(chip) ? chip.wished.value_or(chip.level) : chip.level;
}

bool HomeOverview::belongs_here(const HomeChip& chip) {
  return chip.level > 0 || chip.state != ChipState::kIdle || went_off_.contains(chip.key);
}

void HomeOverview::forget_old() {
  const auto now = loop_.uptime();
  const auto old =
      std::erase_if(went_off_, [now](const auto& entry) { return now - entry.second >= kStays; });
  const bool over = !undo_.empty() && now - undo_since_ >= kStays;
  if (over) undo_.clear();
  if (old > 0 || over) show_soon();
}

void HomeOverview::press(const std::string& key) {
  const Device* device = house_.by_key(key);
  if (!device) return;
  const HomeChip chip = chip_of(*device);
  if (chip.state == ChipState::kNotSent && flags_.connected && device->has_address())
    presses_.repeat(*device, *state_.not_sent(chip.key));
  else
    operations_.start(devices_.press(*device));
}

void HomeOverview::press_all_off() {
  if (!flags_.connected) return;
  undo_since_ = loop_.uptime();
  for (const Device& device : house_.devices()) {
    const HomeChip chip = chip_of(device);
    const int level = final_level(chip);
    if (level == 0 || !device.has_address()) continue;
    undo_.push_back({device, {true, level}});
    presses_.repeat(device, {false, 0});
  }
  show_soon();
}

void HomeOverview::take_back() {
  for (const Switched& switched : std::exchange(undo_, {}))
    if (const Device* device = house_.same_as(switched.device))
      presses_.repeat(*device, switched.before);
  show_soon();
}

}  // namespace homewarden
