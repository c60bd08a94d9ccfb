#pragma once

#include <list>

#include "automation/event_cleanup.h"
#include "automation/event_deletion.h"
#include "automation/event_editor.h"
#include "automation/event_list.h"
#include "automation/event_memory.h"
#include "automation/house_clock.h"
#include "automation/macro_editor.h"
#include "automation/macros.h"
#include "automation/once_events.h"
#include "automation/profile_switch.h"
#include "automation/profiles.h"
#include "automation/run_event_now.h"
#include "automation/scheduler.h"
#include "base/operations.h"
#include "core/house/house_deletion.h"
#include "core/house/house_editor.h"
#include "core/house/navigation_tree.h"
#include "core/house_files.h"
#include "core/house_index.h"
#include "core/list_file.h"
#include "core/lists/room_list.h"
#include "core/module1.h"
#include "core/notices.h"
#include "core/program/shutdown.h"
#include "core/program/startup.h"
#include "core/program/store_notices.h"
#include "core/settings.h"
#include "platform/platform.h"
#include "sun/location.h"
#include "ui/frm_main.h"
#include "ui/frm_server.h"
#include "ui/frm_systray.h"
#include "ui/frm_wait.h"
#include "ui/timer_driver.h"
#include "ui/tray.h"
#include "ui/window_services.h"
#include "web/page_builder.h"
#include "web/request_handler.h"
#include "web/web_server.h"
#include "x10/command_queue.h"
#include "x10/device_commands.h"
#include "x10/device_panel.h"
#include "x10/device_state.h"
#include "x10/incoming_traffic.h"
#include "x10/interface_finder.h"
#include "x10/presses.h"
#include "x10/seen_commands.h"
#include "x10/state_watch.h"
#include "x10/unsent_commands.h"

namespace homewarden {

// The whole program, put together on a platform. Faces show the three forms.
class Program {
 public:
  Program(const Platform& platform, Operations::ErrorHandler on_error);
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  ~Program();

  // Begins the start-up and returns at its first wait; the rest happens from the event loop, which
  // quits when the program ends. To be called once.
  void start();

  // Ends every operation where it waits, and with it the box in which it asks something. To be
  // called before the faces go; destroying the program does the same. A second call does nothing.
  void end();

  FrmMain frm_main;
  FrmWait frm_wait;
  FrmSysTray frmSysTray;
  FrmServer frm_server;

 private:
  Operations operations_;
  Notices notices_;
  Settings settings_;
  HouseIndex house_;
  Module1 module1_;
  DeviceState device_state_;
  HouseFiles files_;
  RoomList rooms_;
  DeviceCommands commands_;
  UnsentCommands unsent_;
  Presses presses_;
  DevicePanel devices_;
  StateWatch state_watch_;
  StoreNotices store_notices_;
  NavigationTree tree_;
  EventList events_;
  EventEditor editor_;
  EventDeletion event_deletion_;
  EventMemory event_memory_;
  OnceEvents once_events_;
  EventCleanup cleanup_;
  RunEventNow run_event_now_;
  Scheduler scheduler_;
  Macros macros_;
  MacroEditor macro_editor_;
  ProfileSwitch profile_switch_;
  Profiles profiles_;
  SeenCommands seen_;
  CommandQueue queue_;
  IncomingTraffic incoming_;
  HouseEditor house_editor_;
  HouseDeletion house_deletion_;
  Location location_;
  HouseClock clock_;
  WindowServices window_;
  PageBuilder pages_;
  WebServer web_server_;
  RequestHandler requests_;
  Tray tray_;
  InterfaceFinder finder_;
  Startup startup_;
  Shutdown shutdown_;
  std::list<TimerDriver> timers_;
};

}  // namespace homewarden
