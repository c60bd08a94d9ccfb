#include "core/program/start_delay.h"

#include <string>

#include "core/settings.h"

namespace homewarden {
namespace {

constexpr int kDelaySeconds = 20;

}  // namespace

bool StartDelay::is_wanted() {
  return module1_.regread(RegistryRoot::kLocalMachine, kDelayKey, "Homewardendelay",
                          "notdelayed") == "delayed";
}

Task<void> StartDelay::wait() {
  for (int seconds = kDelaySeconds; seconds >= 0 && !flags_.skipdelay; --seconds) {
    const std::string text = "Time Delay " + std::to_string(seconds);
    co_await steps_.progress(text);
    co_await module1_.pause(1);
  }
}

}  // namespace homewarden
