#pragma once

#include "automation/profile_switch.h"
#include "base/task.h"
#include "core/house_files.h"
#include "core/lists/room_list.h"
#include "core/module1.h"
#include "core/program/steps.h"
#include "core/settings.h"
#include "platform/single_instance.h"
#include "sun/location.h"
#include "ui/home_panel.h"
#include "ui/shared_state.h"
#include "web/web_server.h"

namespace homewarden {

// How the house is loaded and set going: what window and service have in common. Whoever starts
// calls these in this order, with its own steps between them. A step that fails is left out.
class HouseStartup {
 public:
  // `counterpart` is the other one of window and service.
  HouseStartup(HiddenLists& lists, Flags& flags, OnceRemoval& once, OptionsPanel& options,
               ProgramTimers& timers, Steps& steps, Module1& module1, Settings& settings,
               SingleInstance& counterpart, RoomList& rooms, HouseFiles& files,
               ProfileSwitch& profiles, Location& location, WebServer& web_server);

  // No command of before is waiting or on its way, and what is loaded acts on nothing until
  // begin_work().
  void begin_loading();
  // Waits until it is known what the disk holds, half a minute at most for each file, and until it
  // holds what has been recorded.
  Task<void> learn_settings();
  // An installer that asked the programs to end has done its work.
  void mark_installed();
  // Finishes what a stop left undone in the data files, unless the counterpart still works on them;
  // then reads the rooms.
  Task<void> load_lists();
  void forget_once_events();
  void compute_sun_times();
  // The web server, and the removal of events that have run.
  void begin_work();

 private:
  void recover_files();
  void start_web_server();

  HiddenLists& lists_;
  Flags& flags_;
  OnceRemoval& once_;
  OptionsPanel& options_;
  ProgramTimers& timers_;
  Steps& steps_;
  Module1& module1_;
  Settings& settings_;
  SingleInstance& counterpart_;
  RoomList& rooms_;
  HouseFiles& files_;
  ProfileSwitch& profiles_;
  Location& location_;
  WebServer& web_server_;
  bool waits_for_port_ = false;
};

}  // namespace homewarden
