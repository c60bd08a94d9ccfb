#pragma once

#include <coroutine>
#include <memory>
#include <optional>
#include <utility>

#include "platform/event_loop.h"

namespace homewarden::cm11 {

// A result that one operation waits for. Whoever completes it and whoever waits may go in any
// order: an operation that is destroyed is never resumed, and one whose completer is gone waits for
// ever.
class Completion {
 public:
  explicit Completion(EventLoop& loop) : loop_(&loop) {}
  Completion(const Completion&) = delete;
  Completion& operator=(const Completion&) = delete;

  // The waiting operation goes on from the loop, never from inside this call. Nothing happens when
  // it has been destroyed. To be called once.
  void complete(int result) {
    result_ = result;
    if (!waiting_ || !loop_) return;
    call_ = loop_->call_after(std::chrono::milliseconds(0), [this] {
      call_ = 0;
      std::exchange(waiting_, nullptr).resume();
    });
  }

  // Whoever would complete this goes, and with it perhaps the loop: the operation is never resumed.
  void detach() {
    cancel();
    loop_ = nullptr;
  }

  // The waiting operation has been destroyed.
  bool abandoned() const { return abandoned_; }

  class Awaiter {
   public:
    explicit Awaiter(std::shared_ptr<Completion> completion) : completion_(std::move(completion)) {}
    Awaiter(const Awaiter&) = delete;
    Awaiter& operator=(const Awaiter&) = delete;
    ~Awaiter() { completion_->abandon(); }

    bool await_ready() const noexcept { return completion_->result_.has_value(); }
    void await_suspend(std::coroutine_handle<> waiting) noexcept {
      completion_->waiting_ = waiting;
    }
    int await_resume() const noexcept { return *completion_->result_; }

   private:
    std::shared_ptr<Completion> completion_;
  };

 private:
  void abandon() {
    cancel();
    waiting_ = nullptr;
    abandoned_ = true;
  }
  void cancel() {
    if (loop_ && call_ != 0) loop_->cancel(call_);
    call_ = 0;
  }

  EventLoop* loop_;
  EventLoop::CallId call_ = 0;
  std::coroutine_handle<> waiting_ = nullptr;
  std::optional<int> result_;
  bool abandoned_ = false;
};

}  // namespace homewarden::cm11
