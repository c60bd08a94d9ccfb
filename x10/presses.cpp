#include "x10/presses.h"

#include <algorithm>
#include <utility>

#include "base/flag_guard.h"

namespace homewarden {
namespace {

constexpr int kFullyOn = 100;

}  // namespace

Presses::Presses(Operations& operations, HouseIndex& house, DeviceState& state,
                 DeviceCommands& commands)
    : operations_(operations), house_(house), state_(state), commands_(commands) {
  commands.sending_to.connect([this](const std::string& key, bool begins) {
    if (!begins && on_the_line_ && on_the_line_->key == key) on_the_line_.reset();
  });
}

void Presses::toggle(const Device& device) {
  const std::string key = device.key();
  const Press* last = last_of(key);
  const bool will_be_on = last ? last->order.on : state_.getlaststatus(key);
  add(device, DeviceOrder{!will_be_on, kFullyOn}, false);
}

void Presses::set_level(const Device& device, int level) {
  Press* last = last_of(device.key());
  const bool still_waits = last && (!on_the_line_ || last != &*on_the_line_);
  if (still_waits && last->is_level)
    last->order.level = level;
  else
    add(device, DeviceOrder{true, level}, true);
}

void Presses::repeat(const Device& device, DeviceOrder order) {
  add(device, order, false);
}

void Presses::follow(const Device& from, const Device& to) {
  for (Press& press : waiting_) {
    if (press.device != from) continue;
    press.device = to;
    press.key = to.key();
  }
}

bool Presses::waits(const std::string& device_key) const {
  return std::any_of(waiting_.begin(), waiting_.end(),
                     [&device_key](const Press& press) { return press.key == device_key; });
}

std::optional<int> Presses::wished_level(const std::string& device_key) {
  const Press* last = last_of(device_key);
  return last && last->is_level ? std::optional(last->order.level) : std::nullopt;
}

std::optional<DeviceOrder> Presses::wished(const std::string& device_key) {
  const Press* last = last_of(device_key);
  return last ? std::optional(last->order) : std::nullopt;
}

void Presses::add(const Device& device, DeviceOrder order, bool is_level) {
  waiting_.push_back({device, device.key(), order, is_level, commands_.line_moment()});
  changed(device.key());
  if (!working_) operations_.start(work_off());
}

Presses::Press* Presses::last_of(const std::string& key) {
  const auto last = std::find_if(waiting_.rbegin(), waiting_.rend(),
                                 [&key](const Press& press) { return press.key == key; });
  if (last != waiting_.rend()) return &*last;
  return on_the_line_ && on_the_line_->key == key ? &*on_the_line_ : nullptr;
}

// Each press is taken when it has the line, so that the last word of a slider counts. The second of
// pause behind a command does not hold up the next one.
Task<void> Presses::work_off() {
  const FlagGuard working(working_);
  while (!waiting_.empty()) {
    LineTurn turn = co_await commands_.take_line(Source::kWindow, waiting_.front().since);
    const std::string key = waiting_.front().key;
    on_the_line_ = std::move(waiting_.front());
    waiting_.pop_front();
    changed(key);
    operations_.start(carry_out(std::move(turn), *on_the_line_));
  }
}

Task<void> Presses::carry_out(LineTurn turn, Press press) {
  const Device* device = house_.same_as(press.device);
  if (!device) {
    on_the_line_.reset();
    changed(press.key);
    co_return;
  }
  SwitchTarget target = SwitchTarget::of(*device);
  const DeviceOrder order = press.order;
  const bool brings_up =
      press.is_level && order.level == kFullyOn && state_.getlaststatus(press.key);
  co_await commands_.carry_out(std::move(turn), std::move(target), order, Source::kWindow,
                               brings_up);
}

}  // namespace homewarden
