#pragma once

#include <string_view>

#include "base/operations.h"
#include "base/task.h"
#include "core/module1.h"
#include "core/room_list.h"
#include "core/settings.h"
#include "platform/desktop.h"
#include "platform/event_loop.h"
#include "platform/single_instance.h"
#include "ui/frm_main.h"
#include "ui/frm_wait.h"
#include "ui/navigation_tree.h"
#include "ui/tray.h"
#include "x10/interface_finder.h"

namespace homewarden {

// From the wait window to the window a person works in. A step that fails is left out; the next one
// runs.
class Startup {
 public:
  Startup(FrmMain& form, FrmWait& wait, Operations& operations, EventLoop& loop, Module1& module1,
          Settings& settings, SingleInstance& instance, Desktop& desktop, RoomList& rooms,
          NavigationTree& tree, Tray& tray, InterfaceFinder& finder);

  // Runs once. A copy of the program that finds another one running quits the loop.
  Task<void> Form_Load();

  // Ends the start-up delay at its next second.
  void SkipWait();

 private:
  Task<void> progress(std::string_view text);
  Task<void> stop_service();
  Task<bool> is_second_copy();
  Task<void> delay();
  bool is_delayed();
  void show_web_port();
  void show_first_panel();
  void place_window();
  void set_options();
  Task<void> delayed_step();  // startuptimer
  void restore_window_state();

  FrmMain& form_;
  FrmWait& wait_;
  EventLoop& loop_;
  Module1& module1_;
  Settings& settings_;
  SingleInstance& instance_;
  Desktop& desktop_;
  RoomList& rooms_;
  NavigationTree& tree_;
  Tray& tray_;
  InterfaceFinder& finder_;
};

}  // namespace homewarden
