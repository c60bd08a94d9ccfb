#include "core/program/service_life.h"

#include "core/settings.h"
#include "platform/waiting.h"

namespace homewarden {

ServiceLife::ServiceLife(Window& window, StatusBar& status, Flags& flags, ProgramTimers& timers,
                         Operations& operations, EventLoop& loop, Module1& module1,
                         Registry& registry, Steps& steps, SingleInstance& instance,
                         SingleInstance& window_instance, HouseStartup& startup,
                         HouseShutdown& shutdown, RequestHandler& requests, WebServer& web_server,
                         InterfaceFinder& finder)
    : status_(status),
      operations_(operations),
      loop_(loop),
      module1_(module1),
      steps_(steps),
      instance_(instance),
      window_instance_(window_instance),
      startup_(startup),
      shutdown_(shutdown),
      requests_(requests),
      web_server_(web_server),
      finder_(finder),
      call_(module1, loop),
      delay_(flags, steps, module1) {
  window.close_requested.connect([this] { operations_.start(end()); });
  registry.changed.connect([this](RegistryRoot) { look_for_window(); });
  timers.statetimer.tick.connect([this, &registry] {
    registry.changes(RegistryRoot::kLocalMachine);  // has found what another process wrote
    look_for_window();
  });
}

void ServiceLife::start() {
  running_ = operations_.start(run());
}

Task<void> ServiceLife::run() {
  startup_.begin_loading();
  co_await steps_.finish(startup_.learn_settings());
  const bool is_free = co_await find_house_free();
  if (!is_free) {
    leaving();
    loop_.quit();
    co_return;
  }
  state_ = State::kDelayed;
  if (delay_.is_wanted()) co_await steps_.finish(delay_.wait());
  look_for_window();
  if (state_ != State::kDelayed) co_return;
  take_house();
  startup_.mark_installed();
  co_await startup_.load_lists();
  startup_.forget_once_events();
  startup_.compute_sun_times();
  startup_.begin_work();
  ready();
  finder_.findinterface();
}

Task<bool> ServiceLife::find_house_free() {
  if (take_turn()) co_return true;
  co_await module1_.pause(5);
  if (take_turn()) co_return true;
  status_.panel2 = window_instance_.another_is_running()
                       ? "The window has the house; the service steps aside"
                       : "The service is running already";
  co_return false;
}

bool ServiceLife::take_turn() {
  return !window_instance_.another_is_running() && instance_.take();
}

// What a window left that was killed must not look like one that wants the house.
void ServiceLife::take_house() {
  steps_.run([this] {
    module1_.regwrite(RegistryRoot::kLocalMachine, kMachineKey, "closeengine", "False");
    call_.answered();
  });
  state_ = State::kHasHouse;
}

// The lock besides the flag: both may have written the flag at the same moment.
bool ServiceLife::is_wanted_by_window() {
  if (window_instance_.another_is_running()) return true;
  return state_ == State::kHasHouse &&
         module1_.regread(RegistryRoot::kLocalMachine, kMachineKey, "closeengine") == "True";
}

void ServiceLife::look_for_window() {
  const bool looks = state_ == State::kDelayed || state_ == State::kHasHouse;
  if (!looks || !is_wanted_by_window()) return;
  status_.panel2 = "The window takes the house over; the service steps aside";
  operations_.start(end());
}

// Runs once, however often it is asked for.
Task<void> ServiceLife::end() {
  if (state_ == State::kLeaving) co_return;
  const bool has_house = state_ == State::kHasHouse;
  state_ = State::kLeaving;
  leaving();
  // What asked for the end may still be in the middle of a step.
  co_await pending_events(loop_);
  operations_.end(running_);
  if (has_house) co_await leave();
  co_await steps_.progress("Finished");
  loop_.quit();
}

// A browser whose command is on the line gets its answer; others would keep the house here for as
// long as they press.
Task<void> ServiceLife::leave() {
  shutdown_.take_nothing_more();
  requests_.take_no_more_switches();
  status_.panel2 = "Closing communications, please wait";
  co_await shutdown_.finish_commands();
  steps_.run([this] { web_server_.stop(); });
  co_await shutdown_.finish_commands();
  shutdown_.remove_due_events();
  co_await shutdown_.close_port();
}

}  // namespace homewarden
