#pragma once

#include <cassert>
#include <coroutine>
#include <exception>
#include <optional>
#include <utility>

namespace homewarden {

template <class T = void>
class Task;

namespace detail {

// What the promises of Task<T> and Task<void> share: the awaiter to go on with and the way there.
class TaskPromiseBase {
 public:
  std::suspend_always initial_suspend() noexcept { return {}; }

  struct ResumeAwaiter {
    bool await_ready() noexcept { return false; }
    template <class Promise>
    std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> finished) noexcept {
      return finished.promise().awaiter_;
    }
    void await_resume() noexcept {}
  };
  ResumeAwaiter final_suspend() noexcept { return {}; }

  void unhandled_exception() noexcept { error_ = std::current_exception(); }
  void set_awaiter(std::coroutine_handle<> awaiter) {
    assert(!awaiter_ && "a task is awaited once");
    awaiter_ = awaiter;
  }

 protected:
  void rethrow_error() const {
    if (error_) std::rethrow_exception(error_);
  }

 private:
  std::coroutine_handle<> awaiter_;  // set before the frame runs
  std::exception_ptr error_;
};

template <class T>
class TaskPromise : public TaskPromiseBase {
 public:
  Task<T> get_return_object();
  void return_value(T value) { value_.emplace(std::move(value)); }
  T take_result() {
    rethrow_error();
    return std::move(*value_);
  }

 private:
  std::optional<T> value_;
};

template <>
class TaskPromise<void> : public TaskPromiseBase {
 public:
  Task<void> get_return_object();
  void return_void() {}
  void take_result() const { rethrow_error(); }
};

}  // namespace detail

// An operation that may wait. Nothing runs until the task is awaited; whoever awaits it goes on, on
// the same thread, when it ends, and receives its result or its exception. Destroying a task that
// is suspended ends it at the point where it waits: the guards in its frame run.
//
// A task is awaited once. A second co_await would resume a frame that has finished or waits for
// something else; builds with assertions stop there.
//
// Parameters of a coroutine are values, or references to what the caller keeps alive across the
// co_await.
template <class T>
class [[nodiscard]] Task {
 public:
  using promise_type = detail::TaskPromise<T>;

  explicit Task(std::coroutine_handle<promise_type> frame) : frame_(frame) {}
  Task(Task&& other) noexcept : frame_(std::exchange(other.frame_, nullptr)) {}
  Task(const Task&) = delete;
  Task& operator=(const Task&) = delete;
  Task& operator=(Task&&) = delete;
  ~Task() {
    if (frame_) frame_.destroy();
  }

  auto operator co_await() noexcept {
    struct Awaiter {
      std::coroutine_handle<promise_type> frame;
      bool await_ready() const noexcept { return false; }
      std::coroutine_handle<> await_suspend(std::coroutine_handle<> awaiter) const noexcept {
        frame.promise().set_awaiter(awaiter);
        return frame;
      }
      T await_resume() const { return frame.promise().take_result(); }
    };
    return Awaiter{frame_};
  }

 private:
  std::coroutine_handle<promise_type> frame_;
};

namespace detail {

template <class T>
Task<T> TaskPromise<T>::get_return_object() {
  return Task<T>(std::coroutine_handle<TaskPromise<T>>::from_promise(*this));
}

inline Task<void> TaskPromise<void>::get_return_object() {
  return Task<void>(std::coroutine_handle<TaskPromise<void>>::from_promise(*this));
}

}  // namespace detail

}  // namespace homewarden
