#pragma once

#include "automation/event_list.h"
#include "automation/profile_switch.h"
#include "base/operations.h"
#include "base/task.h"
#include "core/house/navigation_tree.h"
#include "core/lists/room_list.h"
#include "core/module1.h"
#include "core/program/house_startup.h"
#include "core/program/service_mode.h"
#include "core/program/start_options.h"
#include "core/program/steps.h"
#include "core/program/takeover.h"
#include "core/settings.h"
#include "platform/desktop.h"
#include "platform/event_loop.h"
#include "platform/single_instance.h"
#include "ui/frm_main.h"
#include "ui/frm_wait.h"
#include "ui/tray.h"
#include "voice/speech.h"
#include "x10/interface_finder.h"

namespace homewarden {

// From the wait window to the window a person works in: what shows the house, around the steps that
// load it. A step that fails is left out; the next one runs.
class Startup {
 public:
  // Start-up fills every panel of the window.
  Startup(FrmMain& form, FrmWait& wait, Operations& operations, EventLoop& loop, Module1& module1,
          Settings& settings, Steps& steps, SingleInstance& instance, SingleInstance& service,
          Desktop& desktop, HouseStartup& house, RoomList& rooms, Speech& speech,
          NavigationTree& tree, ProfileSwitch& profiles, EventList& events, Tray& tray,
          InterfaceFinder& finder, ServiceMode& service_mode, StartOptions& start_options);

  // Begins, and is called once. A copy of the program that finds another one running quits the loop
  // after five seconds, unless the other one ends by then.
  void start();
  // Ends it where it is; the steps that have not begun do not follow. Nothing happens when it has
  // ended.
  void stop();

  // Whether the house is this copy's: only then may it leave its marks in the settings.
  bool has_house() const { return takeover_.done(); }
  // Lets the service, or another copy, have it: for the end, when nothing is done to it any more.
  void give_house_back() { takeover_.give_back(); }
  // Whether the window has its place of the last time. False, also when that could not be read:
  // where it is now must not be stored.
  bool has_placed_window() const { return placed_; }
  // Whether the service was stopped and nothing has been loaded that says whether it is wanted.
  bool owes_service() const { return takeover_.stopped_service() && !options_set_; }

 private:
  Task<void> Form_Load();
  void mark_taken();
  void show_web_port();
  void set_options();
  void show_boxes();
  Task<void> delayed_step();  // startuptimer
  void restore_window_state();

  Steps& steps_;
  Takeover takeover_;
  FrmMain& form_;
  FrmWait& wait_;
  Operations& operations_;
  EventLoop& loop_;
  Module1& module1_;
  Settings& settings_;
  Desktop& desktop_;
  HouseStartup& house_;
  RoomList& rooms_;
  Speech& speech_;
  NavigationTree& tree_;
  ProfileSwitch& profiles_;
  EventList& events_;
  Tray& tray_;
  InterfaceFinder& finder_;
  ServiceMode& service_mode_;
  StartOptions& start_options_;
  Operations::Id running_ = 0;
  bool placed_ = false;
  bool options_set_ = false;
};

}  // namespace homewarden
