#include "core/program/shutdown.h"

#include "base/text.h"
#include "core/lists/file_lock.h"
#include "core/program/window_position.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kPatience{30000};  // with the command on the line
constexpr milliseconds kStep{100};

}  // namespace

Shutdown::Shutdown(Window& window, StatusBar& status, OptionsPanel& options, Flags& flags,
                   ProgramTimers& timers, FrmWait& wait, Startup& startup, InterfaceFinder& finder,
                   EventCleanup& cleanup, WebServer& web_server, Tray& tray, Operations& operations,
                   EventLoop& loop, Module1& module1, Settings& settings, Desktop& desktop,
                   InterfaceControl& interface_control)
    : steps_(wait, loop, operations),
      window_(window),
      status_(status),
      options_(options),
      flags_(flags),
      timers_(timers),
      wait_(wait),
      startup_(startup),
      finder_(finder),
      cleanup_(cleanup),
      web_server_(web_server),
      tray_(tray),
      loop_(loop),
      module1_(module1),
      settings_(settings),
      desktop_(desktop),
      interface_(interface_control) {
  window.close_requested.connect([this, &operations] { operations.start(Form_Unload()); });
  window.resized.connect([this] { Form_Resize(); });
}

Task<void> Shutdown::Form_Unload() {
  if (unloading_) co_return;
  unloading_ = true;
  // The person, or what asked for the end, may still be in the middle of a step.
  co_await pending_events(loop_);
  startup_.stop();
  if (startup_.has_house()) {
    steps_.run([this] {
      module1_.regwrite(RegistryRoot::kLocalMachine, kMachineKey, "closeengine", "False");
    });
    co_await leave();
  }
  if (options_.chk_service.checked || startup_.owes_service())
    co_await steps_.finish(start_service());
  co_await steps_.progress("Finished");
  wait_.visible = false;
  window_.visible = false;
  loop_.quit();
}

Task<void> Shutdown::leave() {
  take_nothing_more();
  wait_.lab_wait.visible = false;
  wait_.Label1.caption = "Please Wait";  // not how far the start-up came
  wait_.visible = true;
  wait_.Label2.caption = "Homewarden - Closing";
  co_await pending_events(loop_);
  steps_.run([this] { web_server_.stop(); });
  steps_.run([this] { tray_.unload(); });
  flags_.ignoreclicks = true;
  status_.panel2 = "Closing communications, please wait";
  co_await pending_events(loop_);
  co_await steps_.progress("Saving Data");
  if (startup_.has_placed_window()) {
    window_.state = WindowState::kNormal;
    window_.visible = true;
    steps_.run([this] { keep_on_screen(window_, desktop_); });
  }
  co_await steps_.finish(finish_commands());
  steps_.run([this] { remove_due_events(); });
  co_await steps_.progress("Closing Port");
  co_await steps_.finish(close_interface(interface_, module1_));
  if (startup_.has_placed_window()) steps_.run([this] { save_place(window_, settings_); });
  co_await steps_.progress("Starting Service");
}

void Shutdown::take_nothing_more() {
  busy_.emplace(window_);
  finder_.stop();
  for (Timer* timer :
       {&timers_.timerqueue, &timers_.timerdelete, &timers_.timetimer, &timers_.eventtimer})
    timer->set_enabled(false);
}

// What is on its way to the power line gets there and is recorded.
Task<void> Shutdown::finish_commands() {
  if (flags_.sending) co_await steps_.progress("Waiting for the last command");
  milliseconds waited{0};
  for (; (flags_.sending || flags_.filebusy) && waited < kPatience; waited += kStep)
    co_await Delay(loop_, kStep);
}

// Whoever still works on the files keeps them; the events are then removed at the next run.
void Shutdown::remove_due_events() {
  if (flags_.filebusy) return;
  const FileLock files(flags_);
  cleanup_.remove_due_events();
}

void Shutdown::Form_Resize() {
  if (flags_.ignoreclicks) return;
  if (window_.state == WindowState::kMinimized) {
    if (!tray_.can_hide()) return;
    settings_.write("data", "state", "1");
    flags_.ignoreclicks = true;
    window_.visible = false;
    window_.state = WindowState::kNormal;
    flags_.ignoreclicks = false;
  } else {
    settings_.write("data", "state", "0");
    window_.visible = true;
  }
}

// The service must find that the house is free. An operation that will not end keeps it until this
// process is gone.
Task<void> Shutdown::start_service() {
  co_await module1_.stored(RegistryRoot::kLocalMachine);
  if (!flags_.filebusy) startup_.give_house_back();
  module1_.servicestart("", kServiceName);
  co_await module1_.pause(1);
  if (to_lower(module1_.servicestatus("", kServiceName)) != "stopped") co_return;
  co_await module1_.pause(1);
  module1_.servicestart("", kServiceName);
}

}  // namespace homewarden
