#pragma once

#include <coroutine>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <map>

#include "base/task.h"

namespace homewarden {

// Owns the operations that nobody awaits: a click, a timer tick, an incoming command. An operation
// starts at once, is forgotten when it ends, and is destroyed where it waits when this object goes.
class Operations {
 public:
  // Called with what escapes from an operation; the other operations go on.
  using ErrorHandler = std::function<void(std::exception_ptr)>;
  // Names an operation; never 0, never used twice.
  using Id = std::uint64_t;

  // The handler must not be empty.
  explicit Operations(ErrorHandler on_error);
  Operations(const Operations&) = delete;
  Operations& operator=(const Operations&) = delete;
  ~Operations();

  // Runs the operation up to its first wait before returning; one that does not wait has ended by
  // then. Its name is of use to whoever may want to end it.
  Id start(Task<void> operation);

  // Ends one operation where it waits: the guards in its frames run, what it waited for never
  // resumes it. Nothing happens when it has ended already, and for 0. An operation cannot end
  // itself, nor what it was called from.
  void end(Id id);

  // Ends all that still wait, where they wait.
  void destroy_all();

  // Tells the error handler of a failure that its operation went on past. Ends nothing.
  void report(std::exception_ptr error) const { on_error_(error); }

  // How many have not ended; one that calls this counts too.
  std::size_t running() const { return frames_.size(); }

 private:
  struct Detached;
  Detached run(Id id, Task<void> operation);

  ErrorHandler on_error_;
  Id last_id_ = 0;
  std::map<Id, void*> frames_;
};

}  // namespace homewarden
