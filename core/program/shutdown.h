#pragma once

#include "base/operations.h"
#include "base/task.h"
#include "core/module1.h"
#include "core/program/house_shutdown.h"
#include "core/program/service_mode.h"
#include "core/program/startup.h"
#include "core/program/steps.h"
#include "core/settings.h"
#include "platform/desktop.h"
#include "platform/event_loop.h"
#include "ui/controls.h"
#include "ui/frm_wait.h"
#include "ui/home_panel.h"
#include "ui/shared_state.h"
#include "ui/tray.h"
#include "web/web_server.h"

namespace homewarden {

// The end of the program, and the window's way into hiding.
class Shutdown {
 public:
  Shutdown(Window& window, const NavigationPane& pane, StatusBar& status, OptionsPanel& options,
           Flags& flags, FrmWait& wait, Steps& steps, Startup& startup, ServiceMode& service_mode,
           ServiceCall& call, HouseShutdown& house, WebServer& web_server, Tray& tray,
           Operations& operations, EventLoop& loop, Module1& module1, Settings& settings,
           Desktop& desktop);

  // Runs once, however often it is asked for; quits the loop at its end. A command on its way is
  // waited for, 30 seconds at most. A copy of the program that does not have the house yet ends
  // without leaving a mark.
  Task<void> Form_Unload();

  // Minimising the window hides it where an icon can bring it back; anything else makes sure that
  // it shows. Nothing happens while `ignoreclicks` is set.
  void Form_Resize();

 private:
  Task<void> leave();
  Task<void> start_service();

  Steps& steps_;
  Window& window_;
  const NavigationPane& pane_;
  StatusBar& status_;
  OptionsPanel& options_;
  Flags& flags_;
  FrmWait& wait_;
  Startup& startup_;
  ServiceMode& service_mode_;
  ServiceCall& call_;
  HouseShutdown& house_;
  WebServer& web_server_;
  Tray& tray_;
  EventLoop& loop_;
  Module1& module1_;
  Settings& settings_;
  Desktop& desktop_;
  bool unloading_ = false;
};

}  // namespace homewarden
