#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "platform/event_loop.h"
#include "platform/linux/poller.h"

namespace homewarden::testing {

// An event loop on real time and real descriptors that runs for as long as a test wants.
class SocketLoop : public EventLoop {
 public:
  std::chrono::milliseconds uptime() const override { return os_linux::uptime(); }
  LocalTime local_time() const override { return {}; }
  SystemTime system_time() const override {
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
  }
  CallId call_after(std::chrono::milliseconds delay, std::function<void()> function) override {
    calls_.emplace(Due{uptime() + delay, ++last_id_}, std::move(function));
    return last_id_;
  }
  void cancel(CallId id) override {
    std::erase_if(calls_, [&](const auto& call) { return call.first.second == id; });
  }
  void quit() override {}

  void watch_readable(int descriptor, std::function<void()> function) {
    watched_.emplace_back(descriptor, std::move(function));
  }
  void forget(int descriptor) {
    std::erase_if(watched_, [&](const auto& entry) { return entry.first == descriptor; });
  }

  // Runs until the condition holds. False when it does not within the time.
  bool run_until(const std::function<bool()>& condition,
                 std::chrono::milliseconds limit = std::chrono::seconds(10)) {
    const auto end = uptime() + limit;
    while (!condition()) {
      if (uptime() >= end) return false;
      turn(std::min(end, uptime() + std::chrono::milliseconds(5)));
    }
    return true;
  }
  void run_for(std::chrono::milliseconds time) {
    run_until([] { return false; }, time);
  }

  std::size_t pending_calls() const { return calls_.size(); }

 private:
  using Due = std::pair<std::chrono::milliseconds, CallId>;

  void turn(std::chrono::milliseconds until) {
    if (!calls_.empty()) until = std::min(until, calls_.begin()->first.first);
    std::vector<int> descriptors;
    for (const auto& [descriptor, function] : watched_) descriptors.push_back(descriptor);
    const auto ready = os_linux::wait_readable(descriptors, until);
    for (std::size_t i = 0; i < ready.size() && i < watched_.size(); ++i)
      if (ready[i]) watched_[i].second();
    if (calls_.empty() || calls_.begin()->first.first > uptime()) return;
    const auto call = calls_.extract(calls_.begin());
    call.mapped()();
  }

  CallId last_id_ = 0;
  std::map<Due, std::function<void()>> calls_;
  std::vector<std::pair<int, std::function<void()>>> watched_;
};

}  // namespace homewarden::testing
