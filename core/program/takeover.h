#pragma once

#include "base/signal.h"
#include "base/task.h"
#include "core/module1.h"
#include "core/program/start_delay.h"
#include "core/program/steps.h"
#include "platform/single_instance.h"
#include "ui/frm_wait.h"
#include "ui/shared_state.h"

namespace homewarden {

// How a starting copy of the program comes to have the house to itself: the background service
// stops, no other copy runs, and the delay that the person may have asked for is over.
class Takeover {
 public:
  // `instance` is the window's own, `service` that of the background service.
  Takeover(Flags& flags, FrmWait& wait, Steps& steps, Module1& module1, SingleInstance& instance,
           SingleInstance& service);

  // False when another window has the house and this one is to end. That one, and a service whose
  // process still lives, are given five seconds to go; the service, which that one may have started
  // at its end, half a minute more if it needs them; after that it is waited for no longer. The
  // delay takes 20 seconds. Runs once.
  Task<bool> run();

  // Whether the house is this copy's. One that ends before leaves the marks of another alone.
  bool done() const { return done_; }
  // Lets the service, or another copy, have it.
  void give_back();
  // Whether the service was running and has been stopped for this copy.
  bool stopped_service() const { return stopped_service_; }

  // Whether the person asked for the delay. False when nothing is stored.
  bool is_delayed() { return delay_.is_wanted(); }

  // Another copy has the house and may be asked to show itself.
  Signal<> another_runs;

  // Ends the delay at its next second. Nothing happens when there is none.
  void SkipWait();

 private:
  Task<void> stop_service();
  Task<bool> is_second_copy();
  Task<void> service_ends();
  Task<void> keep_delay();

  Flags& flags_;
  FrmWait& wait_;
  Steps& steps_;
  Module1& module1_;
  SingleInstance& instance_;
  SingleInstance& service_;
  StartDelay delay_;
  bool done_ = false;
  bool stopped_service_ = false;
};

}  // namespace homewarden
