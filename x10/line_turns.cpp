#include "x10/line_turns.h"

#include <algorithm>
#include <chrono>

namespace homewarden {

// Somebody who waits for the line. One that is destroyed after it was given the line passes it on.
class LineTurns::Waiting {
 public:
  Waiting(LineTurns& turns, Source source, Moment since)
      : turns_(turns), source_(source), since_(since) {}
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

  Source source() const { return source_; }
  bool must_go_before_the_web() const {
    const bool comes_first =
        source_ == Source::kWindow || source_ == Source::kEvent || source_ == Source::kVoice;
    return comes_first && turns_.web_turns_ > since_;
  }

  // From the loop: whoever releases the line goes on first.
  void give() {
    call_ = turns_.loop_.call_after(std::chrono::milliseconds(0), [this] {
      call_ = 0;
      handle_.resume();
    });
  }

 private:
  LineTurns& turns_;
  const Source source_;
  const Moment since_;
  std::coroutine_handle<> handle_;
  EventLoop::CallId call_ = 0;
};

Task<LineTurn> LineTurns::take(Source source, Moment since) {
  if (taken_)
    co_await Waiting(*this, source, since);
  else
    give_to(source);
  co_return LineTurn(*this);
}

void LineTurns::give_to(Source source) {
  taken_ = true;
  holder_ = source;
  last_turn_[static_cast<std::size_t>(source)] = ++turns_;
  if (source == Source::kWeb) ++web_turns_;
}

LineTurns::Waiting* LineTurns::next() const {
  const bool web_waits = std::any_of(waiting_.begin(), waiting_.end(), [](const Waiting* waiting) {
    return waiting->must_go_before_the_web();
  });
  const auto last_turn = [this](const Waiting* waiting) {
    return last_turn_[static_cast<std::size_t>(waiting->source())];
  };
  Waiting* found = nullptr;
  for (Waiting* waiting : waiting_) {
    if (web_waits && waiting->source() == Source::kWeb) continue;
    if (!found || last_turn(waiting) < last_turn(found)) found = waiting;
  }
  return found;
}

void LineTurns::pass_on() {
  Waiting* const waiting = next();
  taken_ = waiting != nullptr;
  if (!taken_) return;
  waiting_.remove(waiting);
  give_to(waiting->source());
  waiting->give();
}

void LineTurn::release() {
  if (turns_) std::exchange(turns_, nullptr)->pass_on();
}

}  // namespace homewarden
