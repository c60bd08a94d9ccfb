#include "x10/seen_commands.h"

#include <utility>

#include "core/time_text.h"
#include "platform/interface_control.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

constexpr int kFullyOn = 100;

}  // namespace

SeenCommands::SeenCommands(StatusBar& status, HouseIndex& house, EventLoop& loop,
                           DeviceState& state)
    : status_(status), house_(house), loop_(loop), state_(state) {}

Task<void> SeenCommands::record(std::string house, int unit, int function) {
  const Device* found = house_.by_address(house, unit);
  if (!found || (function != kX10On && function != kX10Off)) co_return;
  const bool on = function == kX10On;
  const std::string key = found->key();
  std::string name = found->name;
  // An On brings a lamp up fully, unless it is on: then it stays as it is.
  const int level = state_.getlaststatus(key) ? state_.level(key) : kFullyOn;
  state_.setstatus(key, DeviceOrder{on, level}, Source::kPowerLine);
  co_await tell(std::move(name), on);
}

Task<void> SeenCommands::tell(std::string device_name, bool on) {
  status_.panel2 = "Incoming message, " + device_name +
                   (on ? " has turned on at " : " has turned off at ") +
                   h_mm_ss(loop_.local_time());
  co_await pending_events(loop_);
}

}  // namespace homewarden
