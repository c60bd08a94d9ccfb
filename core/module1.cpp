#include "core/module1.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "base/text.h"
#include "platform/waiting.h"

namespace homewarden {

Module1::Module1(EventLoop& loop, Registry& registry, ServiceControl& services,
                 std::string windows_folder)
    : loop_(loop),
      registry_(registry),
      services_(services),
      windows_folder_(std::move(windows_folder)) {}

std::string Module1::regread(RegistryRoot root, const std::string& key, const std::string& name,
                             const std::string& default_text) {
  const auto value = registry_.read(root, key, name);
  if (!value || value->type != RegistryType::kString) return default_text;
  return value->data.substr(0, value->data.find('\0'));
}

void Module1::regwrite(RegistryRoot root, const std::string& key, const std::string& name,
                       const std::string& text) {
  registry_.write(root, key, name, RegistryValue{RegistryType::kString, text});
}

void Module1::regdelete(RegistryRoot root, const std::string& key, const std::string& name) {
  registry_.remove(root, key, name);
}

std::string Module1::servicestatus(const std::string& machine, const std::string& service) {
  switch (services_.query(machine, service)) {
    case ServiceState::kStopped:
      return "Stopped";
    case ServiceState::kStartPending:
      return "Start Pending";
    case ServiceState::kStopPending:
      return "Stop Pending";
    case ServiceState::kRunning:
      return "Running";
    case ServiceState::kContinuePending:
      return "Coninue Pending";
    case ServiceState::kPausePending:
      return "Pause Pending";
    case ServiceState::kPaused:
      return "Paused";
    case ServiceState::kUnknown:
      break;
  }
  return "";
}

void Module1::servicestart(const std::string& machine, const std::string& service) {
  services_.start(machine, service);
}

void Module1::servicestop(const std::string& machine, const std::string& service) {
  services_.stop(machine, service);
}

Task<void> Module1::pause(int seconds) {
  const LocalTime now = loop_.local_time();
  const long start = round_to_even(now.second + now.millisecond / 1000.0);
  const long length = (start + std::clamp(seconds, 0, 255) - now.second) * 1000 - now.millisecond;
  co_await Delay(loop_, std::chrono::milliseconds(length));
}

std::string Module1::windowsdir() const {
  return windows_folder_.substr(0, 145);
}

}  // namespace homewarden
