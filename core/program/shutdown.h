#pragma once

#include "base/operations.h"
#include "base/task.h"
#include "core/module1.h"
#include "core/program/steps.h"
#include "core/settings.h"
#include "platform/desktop.h"
#include "platform/event_loop.h"
#include "platform/interface_control.h"
#include "ui/frm_main.h"
#include "ui/frm_wait.h"
#include "ui/tray.h"
#include "web/web_server.h"

namespace homewarden {

// The end of the program, and the window's way into hiding.
class Shutdown {
 public:
  Shutdown(FrmMain& form, FrmWait& wait, WebServer& web_server, Tray& tray, Operations& operations,
           EventLoop& loop, Module1& module1, Settings& settings, Desktop& desktop,
           InterfaceControl& interface_control);

  // Runs once, however often it is asked for; quits the loop at its end.
  Task<void> Form_Unload();

  // Minimising the window hides it where an icon can bring it back; anything else makes sure that
  // it shows.
  void Form_Resize();

 private:
  void save_position();
  Task<void> start_service();

  Steps steps_;
  FrmMain& form_;
  FrmWait& wait_;
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
