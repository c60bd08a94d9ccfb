#include "x10/line_turns.h"

#include <chrono>

namespace homewarden {

// Somebody who waits for the line. One that is destroyed after it was given the line passes it on.
class LineTurns::Waiting {
 public:
  explicit Waiting(LineTurns& turns) : turns_(turns) {}
  Waiting(const Waiting&) = delete;
  Waiting& operator=(const Waiting&) = delete;
  ~Waiting() {
    turns_.waiting_.remove(this);
    if (call_ == 0) return;
    turns_.loop_.cancel(call_);
    turns_.pass_on();
  }

  bool await_ready() const noexcept { return false; }
  void await_suspend(std::coroutine_handle<> handle) {
    handle_ = handle;
    turns_.waiting_.push_back(this);
  }
  void await_resume() const noexcept {}

  // From the loop: whoever releases the line goes on first.
  void give() {
    call_ = turns_.loop_.call_after(std::chrono::milliseconds(0), [this] {
      call_ = 0;
      handle_.resume();
    });
  }

 private:
  LineTurns& turns_;
  std::coroutine_handle<> handle_;
  EventLoop::CallId call_ = 0;
};

Task<LineTurn> LineTurns::take() {
  if (taken_) co_await Waiting(*this);
  taken_ = true;
  co_return LineTurn(*this);
}

void LineTurns::pass_on() {
  taken_ = !waiting_.empty();
  if (!taken_) return;
  Waiting* next = waiting_.front();
  waiting_.pop_front();
  next->give();
}

void LineTurn::release() {
  if (turns_) std::exchange(turns_, nullptr)->pass_on();
}

}  // namespace homewarden
