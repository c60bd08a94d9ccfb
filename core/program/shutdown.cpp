#include "core/program/shutdown.h"

#include "base/text.h"
#include "core/program/window_memory.h"
#include "core/program/window_position.h"
#include "platform/waiting.h"

namespace homewarden {

Shutdown::Shutdown(Window& window, const NavigationPane& pane, StatusBar& status,
                   OptionsPanel& options, Flags& flags, FrmWait& wait, Steps& steps,
                   Startup& startup, ServiceMode& service_mode, ServiceCall& call,
                   HouseShutdown& house, WebServer& web_server, Tray& tray, Operations& operations,
                   EventLoop& loop, Module1& module1, Settings& settings, Desktop& desktop)
    : steps_(steps),
      window_(window),
      pane_(pane),
      status_(status),
      options_(options),
      flags_(flags),
      wait_(wait),
      startup_(startup),
      service_mode_(service_mode),
      call_(call),
      house_(house),
      web_server_(web_server),
      tray_(tray),
      loop_(loop),
      module1_(module1),
      settings_(settings),
      desktop_(desktop) {
  window.close_requested.connect([this, &operations] { operations.start(Form_Unload()); });
  window.resized.connect([this] { Form_Resize(); });
}

Task<void> Shutdown::Form_Unload() {
  if (unloading_) co_return;
  unloading_ = true;
  // The person, or what asked for the end, may still be in the middle of a step.
  co_await pending_events(loop_);
  startup_.stop();
  service_mode_.stop_asking();
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
  house_.take_nothing_more();
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
  co_await house_.finish_commands();
  house_.remove_due_events();
  co_await house_.close_port();
  if (startup_.has_placed_window())
    steps_.run([this] {
      save_place(window_, settings_);
      save_view(pane_, settings_);
    });
  co_await steps_.progress("Starting Service");
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
  steps_.run([this] { service_mode_.install_missing(); });
  steps_.run([this] { call_.made(); });
  co_await module1_.stored(RegistryRoot::kLocalMachine);
  if (!flags_.filebusy) startup_.give_house_back();
  module1_.servicestart("", kServiceName);
  co_await module1_.pause(1);
  if (to_lower(module1_.servicestatus("", kServiceName)) != "stopped") co_return;
  co_await module1_.pause(1);
  module1_.servicestart("", kServiceName);
}

}  // namespace homewarden
