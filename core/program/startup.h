#pragma once

#include "automation/event_list.h"
#include "automation/profile_switch.h"
#include "base/operations.h"
#include "base/task.h"
#include "core/house/navigation_tree.h"
#include "core/house_files.h"
#include "core/lists/room_list.h"
#include "core/module1.h"
#include "core/program/steps.h"
#include "core/settings.h"
#include "platform/desktop.h"
#include "platform/event_loop.h"
#include "platform/single_instance.h"
#include "sun/location.h"
#include "ui/frm_main.h"
#include "ui/frm_wait.h"
#include "ui/tray.h"
#include "web/web_server.h"
#include "x10/interface_finder.h"

namespace homewarden {

// From the wait window to the window a person works in. A step that fails is left out; the next one
// runs.
class Startup {
 public:
  Startup(FrmMain& form, FrmWait& wait, Operations& operations, EventLoop& loop, Module1& module1,
          Settings& settings, SingleInstance& instance, Desktop& desktop, RoomList& rooms,
          NavigationTree& tree, HouseFiles& files, ProfileSwitch& profiles, EventList& events,
          Location& location, Tray& tray, InterfaceFinder& finder, WebServer& web_server);

  // Runs once. A copy of the program that finds another one running quits the loop.
  Task<void> Form_Load();

  // Ends the start-up delay at its next second.
  void SkipWait();

 private:
  Task<void> stop_service();
  Task<bool> is_second_copy();
  Task<void> delay();
  bool is_delayed();
  void recover_files();
  void show_web_port();
  void place_window();
  void set_options();
  Task<void> delayed_step();  // startuptimer
  void restore_window_state();

  Steps steps_;
  FrmMain& form_;
  FrmWait& wait_;
  EventLoop& loop_;
  Module1& module1_;
  Settings& settings_;
  SingleInstance& instance_;
  Desktop& desktop_;
  RoomList& rooms_;
  NavigationTree& tree_;
  HouseFiles& files_;
  ProfileSwitch& profiles_;
  EventList& events_;
  Location& location_;
  Tray& tray_;
  InterfaceFinder& finder_;
  WebServer& web_server_;
};

}  // namespace homewarden
