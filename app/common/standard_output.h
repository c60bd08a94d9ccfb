#pragma once

#include "platform/event_loop.h"
#include "platform/linux/line_output.h"

namespace homewarden {

// The streams of this process, through which everything it prints goes once its loop runs: nobody
// who does not read them holds it up.
os_linux::LineOutput& standard_output();
os_linux::LineOutput& standard_error();

// For as long as it lives, what could not be printed is tried again from the loop, and what Qt has
// to say goes the same way.
class PrintFromLoop {
 public:
  explicit PrintFromLoop(EventLoop& loop);
  PrintFromLoop(const PrintFromLoop&) = delete;
  PrintFromLoop& operator=(const PrintFromLoop&) = delete;
  ~PrintFromLoop();

 private:
  void try_again();

  EventLoop& loop_;
  EventLoop::CallId call_ = 0;
};

}  // namespace homewarden
