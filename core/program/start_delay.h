#pragma once

#include "base/task.h"
#include "core/module1.h"
#include "core/program/steps.h"
#include "ui/shared_state.h"

namespace homewarden {

// The delay that a person may have asked for, which window and service keep before they begin.
class StartDelay {
 public:
  StartDelay(Flags& flags, Steps& steps, Module1& module1)
      : flags_(flags), steps_(steps), module1_(module1) {}

  // Whether it was asked for. False when nothing is stored.
  bool is_wanted();
  // Counts 20 seconds down, asked for or not, and names each; `skipdelay` ends it at the next one.
  Task<void> wait();

 private:
  Flags& flags_;
  Steps& steps_;
  Module1& module1_;
};

}  // namespace homewarden
