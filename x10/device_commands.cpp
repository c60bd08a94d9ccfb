#include "x10/device_commands.h"

#include <utility>

#include "base/text.h"
#include "core/time_text.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

constexpr int kFullyOn = 100;
// What stands in a house code came over the network, perhaps.
constexpr std::size_t kLongestHouseCode = 20;

}  // namespace

// `sending` is set as long as one of these lives: it keeps the command queue from starting a
// command.
class DeviceCommands::Sending {
 public:
  explicit Sending(DeviceCommands& commands) : commands_(commands) {
    ++commands_.commands_;
    commands_.flags_.sending = true;
  }
  Sending(const Sending&) = delete;
  Sending& operator=(const Sending&) = delete;
  ~Sending() { commands_.flags_.sending = --commands_.commands_ > 0; }

 private:
  DeviceCommands& commands_;
};

// Tells that a command to a device is on its way.
class DeviceCommands::OnTheWay {
 public:
  OnTheWay(DeviceCommands& commands, const std::string& key, std::optional<DeviceOrder> order)
      : commands_(commands), key_(key) {
    commands_.on_its_way_ = OnItsWay{key_, order};
    commands_.sending_to(key_, true);
  }
  OnTheWay(const OnTheWay&) = delete;
  OnTheWay& operator=(const OnTheWay&) = delete;
  ~OnTheWay() {
    commands_.on_its_way_.reset();
    commands_.sending_to(key_, false);
  }

 private:
  DeviceCommands& commands_;
  const std::string key_;
};

SwitchTarget SwitchTarget::of(const Device& device) {
  return {device.house_code, device.unit, device.key()};
}

DeviceCommands::DeviceCommands(StatusBar& status, Flags& flags, EventLoop& loop, Module1& module1,
                               InterfaceControl& interface_control, DeviceState& state)
    : status_(status),
      flags_(flags),
      loop_(loop),
      module1_(module1),
      interface_(interface_control),
      state_(state),
      turns_(loop) {}

Task<bool> DeviceCommands::turnon(SwitchTarget target, int percent, Source source) {
  const Sending sending(*this);
  const DeviceOrder order{true, percent};
  LineTurn turn = co_await turns_.take(source);
  co_return co_await carry_out(std::move(turn), std::move(target), order, source);
}

Task<bool> DeviceCommands::turnoff(SwitchTarget target, Source source) {
  const Sending sending(*this);
  const DeviceOrder order{false};
  LineTurn turn = co_await turns_.take(source);
  co_return co_await carry_out(std::move(turn), std::move(target), order, source);
}

Task<bool> DeviceCommands::carry_out(LineTurn turn, SwitchTarget target, DeviceOrder order,
                                     Source source, bool bright) {
  const Sending sending(*this);
  const bool sent = co_await send_and_record(std::move(turn), target, order, source, bright);
  co_await finish(std::move(target), order);
  co_return sent;
}

Task<bool> DeviceCommands::send_and_record(LineTurn turn, SwitchTarget target, DeviceOrder order,
                                           Source source, bool bright) {
  const Sending sending(*this);
  const LineTurn has_the_line(std::move(turn));
  const OnTheWay on_the_way(*this, target.key, order);
  // A lamp that is on stays at its level when it gets a mere On, and one that the last command did
  // not reach may be at any level.
  const bool may_be_dimmed =
      state_.getlaststatus(target.key) &&
      (state_.level(target.key) < kFullyOn || state_.not_sent(target.key).has_value());
  const bool sent = co_await send_order(target, order, bright || may_be_dimmed);
  on_its_way_.reset();
  if (!target.key.empty()) state_.setstatus(target.key, order, source, sent);
  tried(target, sent);
  co_return sent;
}

Task<void> DeviceCommands::finish(SwitchTarget target, DeviceOrder order) {
  const Sending sending(*this);
  co_await module1_.pause(1);
  const int dimmed_or_on = order.level == kFullyOn ? kX10On : kX10Dim;
  carried_out(target.house_code, target.unit, order.on ? dimmed_or_on : kX10Off);
}

// Gives up at the first command that did not go out: what follows would start from another level.
Task<bool> DeviceCommands::send_order(SwitchTarget target, DeviceOrder order, bool bright) {
  bool sent = false;
  if (!order.on) {
    sent = co_await send(target, kX10Off, 20);
    report(sent, "Turned OFF", "turn OFF", target);
    co_return sent;
  }
  const bool dims = order.level != kFullyOn;
  if (dims) {
    status_.panel2 = "Please wait, setting dim level";
    co_await pending_events(loop_);
  }
  sent = co_await send(target, kX10On, dims ? 0 : 20);
  if (sent && (dims || bright)) sent = co_await send(target, kX10Bright, 100);
  if (sent && dims) sent = co_await send(target, kX10Dim, 100 - order.level);
  if (dims)
    report(sent, "DIMMED", "DIM", target, " to " + std::to_string(order.level) + "%");
  else
    report(sent, "Turned ON", "turn ON", target);
  co_return sent;
}

Task<bool> DeviceCommands::turndim(SwitchTarget target, Source source) {
  const Sending sending(*this);
  LineTurn turn = co_await turns_.take(source);
  co_return co_await step_down(std::move(turn), std::move(target));
}

Task<bool> DeviceCommands::turnbright(SwitchTarget target, Source source) {
  LineTurn turn = co_await turns_.take(source);
  co_return co_await step_up(std::move(turn), std::move(target));
}

Task<bool> DeviceCommands::step_down(LineTurn turn, SwitchTarget target) {
  const Sending sending(*this);
  const LineTurn has_the_line(std::move(turn));
  const OnTheWay on_the_way(*this, target.key, std::nullopt);
  const bool sent = co_await send(target, kX10Dim, 20);
  report(sent, "DIMMED", "DIM", target);
  tried(target, sent);
  co_return sent;
}

Task<bool> DeviceCommands::step_up(LineTurn turn, SwitchTarget target) {
  const LineTurn has_the_line(std::move(turn));
  const OnTheWay on_the_way(*this, target.key, std::nullopt);
  const bool sent = co_await send(target, kX10Bright, 20);
  report(sent, "BRIGHT command sent to", "send a BRIGHT command to", target);
  tried(target, sent);
  co_return sent;
}

Task<bool> DeviceCommands::send(SwitchTarget target, int function, double amount) {
  const std::string unit = std::to_string(target.unit);
  const int status = co_await interface_.SendX10(target.house_code, unit, function, amount, 20, 50);
  co_return status == 0;
}

void DeviceCommands::report(bool sent, const std::string& done, const std::string& to_do,
                            const SwitchTarget& target, const std::string& more) {
  status_.panel2 = (sent ? done : "Could not " + to_do) + " device with housecode " +
                   on_one_line(target.house_code, kLongestHouseCode) + std::to_string(target.unit) +
                   more + " at " + hh_mm_ss(loop_.local_time()) + target.asked_by;
}

}  // namespace homewarden
