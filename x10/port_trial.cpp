#include "x10/port_trial.h"

#include "base/text.h"
#include "core/settings.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

constexpr int kLastPort = 15;
constexpr int kRetries = 3;
constexpr int kRetryPause = 5;

constexpr int kFound = 0;  // OpenInterface
constexpr int kUnusable = 1;

}  // namespace

PortTrial::PortTrial(StatusBar& status, EventLoop& loop, Module1& module1,
                     InterfaceControl& interface_control)
    : status_(status), loop_(loop), module1_(module1), interface_(interface_control) {}

Task<PortTrial::Result> PortTrial::try_ports(Manner manner) {
  Result result;
  int skipped_port = 0;
  const std::string stored =
      module1_.regread(RegistryRoot::kLocalMachine, kMachineKey, "port", "none");
  if (stored != "none") {
    const int port = static_cast<int>(leading_number(stored));
    const int status = co_await open_stored_port(port, manner);
    if (status == kFound) result.port = port;
    result.stored_port_failed = status != kFound && status != kUnusable;
    if (status != kUnusable) co_return result;
    skipped_port = port;
  }
  result.port = co_await scan_ports(skipped_port, manner);
  co_return result;
}

// The status of the last attempt.
Task<int> PortTrial::open_stored_port(int port, Manner manner) {
  interface_.PortNumber(port);
  const int retries = manner == Manner::kThorough ? kRetries : 0;
  for (int retry = 0;; ++retry) {
    const int status = co_await interface_.OpenInterface();
    if (status == kFound || status == kUnusable || retry == retries) co_return status;
    co_await module1_.pause(kRetryPause);
  }
}

// 0: none of them.
Task<int> PortTrial::scan_ports(int skipped_port, Manner manner) {
  for (int port = 1; port <= kLastPort; ++port) {
    if (port == skipped_port) continue;
    if (manner == Manner::kThorough)
      status_.panel2 = "Please wait, looking for interface on com port " + std::to_string(port);
    co_await pending_events(loop_);
    interface_.PortNumber(port);
    const int status = co_await interface_.OpenInterface();
    if (status == kFound) co_return port;
  }
  co_return 0;
}

void PortTrial::store_port(const std::string& port) {
  module1_.regwrite(RegistryRoot::kLocalMachine, kMachineKey, "port", port);
}

}  // namespace homewarden
