#include "x10/incoming_traffic.h"

#include <cmath>
#include <utility>

#include "base/flag_guard.h"
#include "base/text.h"
#include "core/time_text.h"
#include "platform/waiting.h"

namespace homewarden {

IncomingTraffic::IncomingTraffic(StatusBar& status, Operations& operations, EventLoop& loop,
                                 InterfaceControl& interface_control, SeenCommands& seen)
    : status_(status), loop_(loop), seen_(seen) {
  interface_control.CommandReceived.connect(
      [this, &operations](const std::string& address, int function) {
        const auto unit = std::lround(leading_number(address.substr(address.empty() ? 0 : 1)));
        waiting_.push_back({address.substr(0, 1), static_cast<int>(unit), function});
        if (!handling_) operations.start(handle_all());
      });
}

Task<void> IncomingTraffic::handle_all() {
  const FlagGuard handling(handling_);
  while (!waiting_.empty()) {
    Command command = std::move(waiting_.front());
    waiting_.pop_front();
    co_await handle(std::move(command));
  }
}

Task<void> IncomingTraffic::handle(Command command) {
  status_.panel2 = "Incoming command from X10, " + command.house + std::to_string(command.unit) +
                   ", " + std::to_string(command.function) + ", at " + hh_mm(loop_.local_time());
  co_await pending_events(loop_);
  seen_on_line(command.house, command.unit, command.function);
  co_await seen_.record(command.house, command.unit, command.function);
}

}  // namespace homewarden
