#pragma once

#include <optional>

#include "automation/event_cleanup.h"
#include "base/operations.h"
#include "base/task.h"
#include "core/module1.h"
#include "core/program/startup.h"
#include "core/program/steps.h"
#include "core/settings.h"
#include "platform/desktop.h"
#include "platform/event_loop.h"
#include "platform/interface_control.h"
#include "ui/busy_window.h"
#include "ui/controls.h"
#include "ui/frm_wait.h"
#include "ui/home_panel.h"
#include "ui/shared_state.h"
#include "ui/tray.h"
#include "web/web_server.h"
#include "x10/interface_finder.h"

namespace homewarden {

// The end of the program, and the window's way into hiding.
class Shutdown {
 public:
  Shutdown(Window& window, StatusBar& status, OptionsPanel& options, Flags& flags,
           ProgramTimers& timers, FrmWait& wait, Startup& startup, InterfaceFinder& finder,
           EventCleanup& cleanup, WebServer& web_server, Tray& tray, Operations& operations,
           EventLoop& loop, Module1& module1, Settings& settings, Desktop& desktop,
           InterfaceControl& interface_control);

  // Runs once, however often it is asked for; quits the loop at its end. A command on its way is
  // waited for, 30 seconds at most. A copy of the program that does not have the house yet ends
  // without leaving a mark.
  Task<void> Form_Unload();

  // Minimising the window hides it where an icon can bring it back; anything else makes sure that
  // it shows. Nothing happens while `ignoreclicks` is set.
  void Form_Resize();

 private:
  void take_nothing_more();
  Task<void> leave();
  Task<void> finish_commands();
  void remove_due_events();
  Task<void> start_service();

  Steps steps_;
  Window& window_;
  std::optional<BusyWindow> busy_;  // once the closing has begun
  StatusBar& status_;
  OptionsPanel& options_;
  Flags& flags_;
  ProgramTimers& timers_;
  FrmWait& wait_;
  Startup& startup_;
  InterfaceFinder& finder_;
  EventCleanup& cleanup_;
  WebServer& web_server_;
  Tray& tray_;
  EventLoop& loop_;
  Module1& module1_;
  Settings& settings_;
  Desktop& desktop_;
  InterfaceControl& interface_;
  bool unloading_ = false;
};

}  // namespace homewarden
