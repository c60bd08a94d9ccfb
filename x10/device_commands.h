#pragma once

#include <optional>
#include <string>

#include "base/signal.h"
#include "base/task.h"
#include "core/devices.h"
#include "core/module1.h"
#include "platform/event_loop.h"
#include "platform/interface_control.h"
#include "ui/controls.h"
#include "ui/shared_state.h"
#include "x10/device_state.h"
#include "x10/line_turns.h"

namespace homewarden {

// What a command goes to: an address on the power line, and the device key that its outcome is
// recorded under; "" records nothing.
struct SwitchTarget {
  std::string house_code;
  int unit = 0;
  std::string key;
  std::string asked_by{};  // put behind what the status line says of it, like " (from 10.0.0.7)"

  // What the device is switched by. Its address may be one that the power line does not have.
  static SwitchTarget of(const Device& device);
};

// The switching act. Everything that switches a device, whatever it is, comes through here: the
// commands are sent, the outcome is recorded and told (DeviceState::changed), reported in the
// status line, and a second later macros hear of it.
//
// One act at a time has the line; others take turns (x10/line_turns.h). All results are true when
// every command went out on the power line. What did not is recorded all the same, as not sent.
class DeviceCommands {
 public:
  DeviceCommands(StatusBar& status, Flags& flags, EventLoop& loop, Module1& module1,
                 InterfaceControl& interface_control, DeviceState& state);

  // Switches on when `percent` is 100, with Bright 100 behind the On for a device that is recorded
  // as on below that, or as on and not reached. Otherwise sets the brightness to `percent`, 0 to
  // 99, by On, full Bright and Dim. Returns after a pause of one second, in which other acts may
  // begin.
  Task<bool> turnon(SwitchTarget target, int percent, Source source);
  // Pauses like turnon. The device is recorded as off, also when the command could not be sent.
  Task<bool> turnoff(SwitchTarget target, Source source);
  // For who has the line already; it is released before the pause. `bright` sends Bright 100 behind
  // an On at 100 whatever is recorded.
  Task<bool> carry_out(LineTurn turn, SwitchTarget target, DeviceOrder order, Source source,
                       bool bright = false);
  // The same in two steps. The first returns when the command is out and recorded, the second after
  // the pause; nothing may be waited for in between.
  Task<bool> send_and_record(LineTurn turn, SwitchTarget target, DeviceOrder order, Source source,
                             bool bright = false);
  Task<void> finish(SwitchTarget target, DeviceOrder order);

  // Waits for the turn of this source. `since` is when the wait began, for somebody who asks later.
  Task<LineTurn> take_line(Source source) { return turns_.take(source); }
  Task<LineTurn> take_line(Source source, LineTurns::Moment since) {
    return turns_.take(source, since);
  }
  LineTurns::Moment line_moment() const { return turns_.now(); }
  unsigned long line_turns() const { return turns_.count(); }

  // A step of 20 % down or up, without a pause behind it. Nothing is recorded, whatever the result:
  // what level comes out is not known.
  Task<bool> turndim(SwitchTarget target, Source source);
  Task<bool> turnbright(SwitchTarget target, Source source);
  // The same for who has the line already.
  Task<bool> step_down(LineTurn turn, SwitchTarget target);
  Task<bool> step_up(LineTurn turn, SwitchTarget target);

  // What is on its way to a device and not recorded yet.
  struct OnItsWay {
    std::string key;                   // as in SwitchTarget
    std::optional<DeviceOrder> order;  // nothing for a step
  };
  // Nothing when nobody has the line. Changes right before `sending_to` and DeviceState::changed.
  const std::optional<OnItsWay>& on_its_way() const { return on_its_way_; }

  // Raised with the device key when an act gets the line (true) and when it is recorded or given up
  // (false).
  Signal<const std::string&, bool> sending_to;

  // Raised when an act or a step has left the line: whether all of it was sent.
  Signal<const SwitchTarget&, bool> tried;

  // Raised after the pause of every act but a step, also when it could not be sent, while `sending`
  // is still set: what happened to which address, as X10 functions: 2 on, 3 off, 4 dimmed.
  Signal<const std::string&, int, int> carried_out;

 private:
  class Sending;
  class OnTheWay;

  Task<bool> send(SwitchTarget target, int function, double amount);
  Task<bool> send_order(SwitchTarget target, DeviceOrder order, bool bright);
  void report(bool sent, const std::string& done, const std::string& to_do,
              const SwitchTarget& target, const std::string& more = {});

  StatusBar& status_;
  Flags& flags_;
  EventLoop& loop_;
  Module1& module1_;
  InterfaceControl& interface_;
  DeviceState& state_;
  LineTurns turns_;
  int commands_ = 0;  // being sent
  std::optional<OnItsWay> on_its_way_;
};

}  // namespace homewarden
