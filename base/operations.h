#pragma once

#include <coroutine>
#include <cstddef>
#include <exception>
#include <functional>
#include <set>

#include "base/task.h"

namespace homewarden {

// Owns the operations that nobody awaits: a click, a timer tick, an incoming command. An operation
// starts at once, is forgotten when it ends, and is destroyed where it waits when this object goes.
class Operations {
 public:
  // Called with what escapes from an operation; the other operations go on.
  using ErrorHandler = std::function<void(std::exception_ptr)>;

  explicit Operations(ErrorHandler on_error);
  Operations(const Operations&) = delete;
  Operations& operator=(const Operations&) = delete;
  ~Operations();

  // Runs the operation up to its first wait before returning.
  void start(Task<void> operation);

  // Ends all that still wait, where they wait.
  void destroy_all();

  // Tells the error handler of a failure that its operation went on past.
  void report(std::exception_ptr error) const { on_error_(error); }

  std::size_t running() const { return frames_.size(); }

 private:
  struct Detached;
  Detached run(Task<void> operation);

  ErrorHandler on_error_;
  std::set<void*> frames_;
};

}  // namespace homewarden
