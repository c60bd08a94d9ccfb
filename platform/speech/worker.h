#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace homewarden::speech {

// A thread that does one thing after the other. It is started by the first.
class Worker {
 public:
  Worker() = default;
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;
  ~Worker() { finish(); }

  // The function, which must not throw, is called in the thread, after all that were asked for
  // before.
  void ask(std::function<void()> function);

  // Returns when what it does now has come to its end; what waits is dropped, and nothing can be
  // asked any more.
  void finish();

 private:
  void run();

  std::mutex lock_;
  std::condition_variable nudge_;
  std::deque<std::function<void()>> waiting_;
  bool stop_ = false;
  std::thread thread_;
};

}  // namespace homewarden::speech
