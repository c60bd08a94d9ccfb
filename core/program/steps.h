#pragma once

#include <exception>
#include <string_view>

#include "base/operations.h"
#include "base/task.h"
#include "platform/event_loop.h"
#include "ui/frm_wait.h"

namespace homewarden {

// The background service that takes the house over while the window is closed.
inline const char* const kServiceName = "Wardengine";

// The steps of start-up and shutdown. A step that fails is reported and left out; the next one
// runs.
class Steps {
 public:
  Steps(FrmWait& wait, EventLoop& loop, Operations& operations)
      : wait_(wait), loop_(loop), operations_(operations) {}

  // Names what is being done in the wait window and returns when it has been painted.
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
  FrmWait& wait_;
  EventLoop& loop_;
  Operations& operations_;
};

}  // namespace homewarden
