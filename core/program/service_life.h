#pragma once

#include "base/operations.h"
#include "base/signal.h"
#include "base/task.h"
#include "core/module1.h"
#include "core/program/house_shutdown.h"
#include "core/program/house_startup.h"
#include "core/program/service_call.h"
#include "core/program/start_delay.h"
#include "core/program/steps.h"
#include "platform/event_loop.h"
#include "platform/registry.h"
#include "platform/single_instance.h"
#include "ui/controls.h"
#include "ui/shared_state.h"
#include "web/request_handler.h"
#include "web/web_server.h"
#include "x10/interface_finder.h"

namespace homewarden {

// The background service from its start to its end: it takes a house that nobody else has, and
// leaves it as soon as the window wants it or somebody asks it to end.
class ServiceLife {
 public:
  // `instance` is the service's own, `window_instance` that of the window. Ends when the window
  // object asks to be closed.
  ServiceLife(Window& window, StatusBar& status, Flags& flags, ProgramTimers& timers,
              Operations& operations, EventLoop& loop, Module1& module1, Registry& registry,
              Steps& steps, SingleInstance& instance, SingleInstance& window_instance,
              HouseStartup& startup, HouseShutdown& shutdown, RequestHandler& requests,
              WebServer& web_server, InterfaceFinder& finder);

  // To be called once. Quits the loop when another copy or the window still has the house after
  // five seconds, with a line in panel 2. The delay that a person may have asked for is kept.
  void start();

  // The house runs and the web server answers, or cannot; not raised where another has the house.
  Signal<> ready;
  // The service is about to end, whether or not it has been ready. Raised once.
  Signal<> leaving;

 private:
  enum class State { kWaiting, kDelayed, kHasHouse, kLeaving };

  Task<void> run();
  Task<bool> find_house_free();
  bool take_turn();
  void take_house();
  bool is_wanted_by_window();
  void look_for_window();
  Task<void> end();
  Task<void> leave();

  StatusBar& status_;
  Operations& operations_;
  EventLoop& loop_;
  Module1& module1_;
  Steps& steps_;
  SingleInstance& instance_;
  SingleInstance& window_instance_;
  HouseStartup& startup_;
  HouseShutdown& shutdown_;
  RequestHandler& requests_;
  WebServer& web_server_;
  InterfaceFinder& finder_;
  ServiceCall call_;
  StartDelay delay_;
  State state_ = State::kWaiting;
  Operations::Id running_ = 0;
};

}  // namespace homewarden
