#include "core/program/takeover.h"

#include <string>

#include "base/text.h"

namespace homewarden {
namespace {

constexpr int kStopTries = 3;
constexpr int kPause = 5;
// As long as the service may take for its last commands, and a little more.
constexpr int kPatience = 35;

}  // namespace

Takeover::Takeover(Flags& flags, FrmWait& wait, Steps& steps, Module1& module1,
                   SingleInstance& instance, SingleInstance& service)
    : flags_(flags),
      wait_(wait),
      steps_(steps),
      module1_(module1),
      instance_(instance),
      service_(service),
      delay_(flags, steps, module1) {
  wait.lab_wait.tool_tip = "Click Here To Skip The Delay";
  wait.lab_wait.click.connect([this] { SkipWait(); });
}

Task<bool> Takeover::run() {
  co_await steps_.finish(stop_service());
  const bool second_copy = co_await is_second_copy();
  if (second_copy) co_return false;
  co_await steps_.finish(keep_delay());
  done_ = true;
  co_return true;
}

void Takeover::give_back() {
  done_ = false;
  instance_.give_back();
}

void Takeover::SkipWait() {
  flags_.skipdelay = true;
}

Task<void> Takeover::stop_service() {
  const std::string status = to_lower(module1_.servicestatus("", kServiceName));
  if (status.empty() || status == "stopped") co_return;
  stopped_service_ = true;
  for (int tries = 0; tries < kStopTries; ++tries) {
    if (tries > 0 && to_lower(module1_.servicestatus("", kServiceName)) == "stopped") co_return;
    module1_.servicestop("", kServiceName);
    if (tries == 0) co_await steps_.progress("Stopping Service");
    co_await module1_.pause(3);
  }
}

// A copy that ends meanwhile may leave the house to the service.
Task<bool> Takeover::is_second_copy() {
  const bool is_first = instance_.take();
  if (!is_first) {
    another_runs();
    co_await module1_.pause(kPause);
    const bool stays = !instance_.take();
    wait_.visible = !stays;
    if (stays) co_return true;
    co_await steps_.finish(stop_service());
  }
  if (!service_.another_is_running()) co_return false;
  co_await module1_.pause(kPause);
  co_await service_ends();
  co_return false;
}

// Beside it the web server would find its port taken, and events no interface.
Task<void> Takeover::service_ends() {
  for (int waited = kPause; service_.another_is_running() && waited < kPatience; ++waited) {
    co_await steps_.progress("Waiting for the service");
    co_await module1_.pause(1);
  }
}

Task<void> Takeover::keep_delay() {
  if (!is_delayed()) co_return;
  wait_.lab_wait.visible = true;
  co_await delay_.wait();
  wait_.lab_wait.visible = false;
}

}  // namespace homewarden
