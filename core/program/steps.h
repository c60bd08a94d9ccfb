#pragma once

#include <exception>
#include <string_view>

#include "base/operations.h"
#include "base/task.h"
#include "platform/event_loop.h"
#include "ui/controls.h"

namespace homewarden {

// The background service that takes the house over while the window is closed.
inline const char* const kServiceName = "Wardengine";

// The steps of start-up and shutdown. A step that fails is reported and left out; the next one
// runs.
class Steps {
 public:
  // `line` shows what is being done.
  Steps(Label& line, EventLoop& loop, Operations& operations)
      : line_(line), loop_(loop), operations_(operations) {}

  // Names what is being done and returns when that has been painted.
  Task<void> progress(std::string_view text);

  // Both come back whatever the step does: what it throws goes to the error handler.
  template <class Step>
  void run(Step step) {
    try {
      step();
    } catch (...) {
      operations_.report(std::current_exception());
    }
  }
  Task<void> finish(Task<void> step);

 private:
  Label& line_;
  EventLoop& loop_;
  Operations& operations_;
};

}  // namespace homewarden
