#pragma once

#include <chrono>
#include <optional>

#include "automation/event_cleanup.h"
#include "base/signal.h"
#include "base/task.h"
#include "core/module1.h"
#include "core/program/steps.h"
#include "platform/event_loop.h"
#include "platform/interface_control.h"
#include "ui/busy_window.h"
#include "ui/controls.h"
#include "ui/shared_state.h"
#include "x10/incoming_traffic.h"
#include "x10/interface_finder.h"

namespace homewarden {

// How the house is left without losing a command: what window and service have in common. Whoever
// ends calls these in this order, with its own steps between them. A step that fails is left out.
class HouseShutdown {
 public:
  HouseShutdown(Window& window, HiddenLists& lists, Flags& flags, ProgramTimers& timers,
                Steps& steps, InterfaceFinder& finder, IncomingTraffic& incoming,
                EventCleanup& cleanup, EventLoop& loop, Module1& module1,
                InterfaceControl& interface_control);

  // No press, search or event begins from now on; what macros have queued is sent as fast as the
  // line takes it.
  void take_nothing_more();
  Signal<> begins;  // raised by it

  // What is on its way to the power line gets there and is recorded, as is what comes from there
  // and what macros do about it; what works on the files comes to its end. Waits 30 seconds at
  // most, all calls together.
  Task<void> finish_commands();
  // Whoever still works on the files keeps them; the events are then removed at the next run.
  void remove_due_events();
  // When nothing is on its way any more. Two tries, a second apart when the first one fails.
  Task<void> close_port();

 private:
  bool is_busy() const;

  Window& window_;
  std::optional<BusyWindow> busy_;  // once the closing has begun
  HiddenLists& lists_;
  Flags& flags_;
  ProgramTimers& timers_;
  Steps& steps_;
  InterfaceFinder& finder_;
  IncomingTraffic& incoming_;
  EventCleanup& cleanup_;
  EventLoop& loop_;
  Module1& module1_;
  InterfaceControl& interface_;
  std::chrono::milliseconds waited_{0};
};

}  // namespace homewarden
