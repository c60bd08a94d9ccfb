#include "platform/speech/worker.h"

#include <utility>

namespace homewarden::speech {

void Worker::finish() {
  {
    const std::lock_guard guard(lock_);
    stop_ = true;
    nudge_.notify_all();
  }
  if (thread_.joinable()) thread_.join();
}

void Worker::ask(std::function<void()> function) {
  const std::lock_guard guard(lock_);
  if (stop_) return;
  waiting_.push_back(std::move(function));
  nudge_.notify_all();
  if (!thread_.joinable()) thread_ = std::thread([this] { run(); });
}

void Worker::run() {
  std::unique_lock guard(lock_);
  while (true) {
    nudge_.wait(guard, [this] { return stop_ || !waiting_.empty(); });
    if (stop_) return;
    const std::function<void()> next = std::move(waiting_.front());
    waiting_.pop_front();
    guard.unlock();
    next();
    guard.lock();
  }
}

}  // namespace homewarden::speech
