#include "base/operations.h"

#include <utility>

namespace homewarden {

// The outermost frame of an operation. It starts eagerly and frees itself when the operation ends.
struct Operations::Detached {
  struct promise_type {
    promise_type(Operations& owner, Id id, Task<void>& /*operation*/) : owner_(owner), id_(id) {}
    ~promise_type() { owner_.frames_.erase(id_); }

    Detached get_return_object() {
      owner_.frames_.emplace(id_, frame().address());
      return {};
    }
    std::suspend_never initial_suspend() noexcept { return {}; }
    std::suspend_never final_suspend() noexcept { return {}; }
    void return_void() {}
    void unhandled_exception() { owner_.on_error_(std::current_exception()); }

   private:
    std::coroutine_handle<promise_type> frame() {
      return std::coroutine_handle<promise_type>::from_promise(*this);
    }
    Operations& owner_;
    Id id_;
  };
};

Operations::Operations(ErrorHandler on_error) : on_error_(std::move(on_error)) {}

Operations::~Operations() {
  destroy_all();
}

void Operations::destroy_all() {
  // A guard that runs in a destroyed frame may start another operation, hence no plain loop.
  while (!frames_.empty()) std::coroutine_handle<>::from_address(frames_.begin()->second).destroy();
}

Operations::Id Operations::start(Task<void> operation) {
  const Id id = ++last_id_;
  run(id, std::move(operation));
  return id;
}

void Operations::end(Id id) {
  const auto found = frames_.find(id);
  if (found != frames_.end()) std::coroutine_handle<>::from_address(found->second).destroy();
}

Operations::Detached Operations::run(Id /*id*/, Task<void> operation) {
  co_await operation;
}

}  // namespace homewarden
