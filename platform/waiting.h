#pragma once

#include <chrono>
#include <coroutine>

#include "platform/event_loop.h"

namespace homewarden {

// `co_await Delay(loop, 500ms)` goes on from the loop when the time has passed. An operation that
// is destroyed while it waits is never resumed. Zero waits for what is pending. To be awaited once.
class [[nodiscard]] Delay {
 public:
  Delay(EventLoop& loop, std::chrono::milliseconds length) : loop_(loop), length_(length) {}
  Delay(const Delay&) = delete;
  Delay& operator=(const Delay&) = delete;
  ~Delay() {
    if (call_ != 0) loop_.cancel(call_);
  }

  bool await_ready() const noexcept { return false; }
  void await_suspend(std::coroutine_handle<> waiting) {
    call_ = loop_.call_after(length_, [this, waiting] {
      call_ = 0;
      waiting.resume();
    });
  }
  void await_resume() const noexcept {}

 private:
  EventLoop& loop_;
  std::chrono::milliseconds length_;
  EventLoop::CallId call_ = 0;
};

// Lets everything that is pending now go first: input, painting, timers that are due.
inline Delay pending_events(EventLoop& loop) {
  return Delay(loop, std::chrono::milliseconds(0));
}

}  // namespace homewarden
