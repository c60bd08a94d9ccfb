#include "core/module1.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "base/text.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLook{2};  // how often it is asked whether it is on the disk
constexpr milliseconds kStorePatience{5000};
constexpr milliseconds kReadPatience{30000};
constexpr milliseconds kReadLook{100};

}  // namespace

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

Task<bool> Module1::stored(RegistryRoot root) {
  const std::uint64_t wanted = registry_.state(root).recorded;
  const milliseconds end = loop_.uptime() + kStorePatience;
  for (;;) {
    const StoreState state = registry_.state(root);
    if (state.on_disk >= wanted) co_return true;
    if (state.trouble != StoreTrouble::kNone || loop_.uptime() >= end) co_return false;
    co_await Delay(loop_, kLook);
  }
}

Task<bool> Module1::known(RegistryRoot root) {
  const milliseconds end = loop_.uptime() + kReadPatience;
  for (;;) {
    const StoreState state = registry_.state(root);
    if (state.is_read) co_return true;
    const bool passes = state.trouble == StoreTrouble::kNone ||
                        state.trouble == StoreTrouble::kLocked ||
                        state.trouble == StoreTrouble::kSlow;
    if (!passes || loop_.uptime() >= end) co_return false;
    co_await Delay(loop_, kReadLook);
  }
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
  co_await Delay(loop_, milliseconds(length));
}

std::string Module1::windowsdir() const {
  return windows_folder_.substr(0, 145);
}

}  // namespace homewarden
