#pragma once

#include <list>

#include "api/automation_api.h"
#include "api/change_log.h"
#include "api/house_api.h"
#include "api/remote_commands.h"
#include "api/routes.h"
#include "automation/event_cleanup.h"
#include "automation/event_list.h"
#include "automation/event_memory.h"
#include "automation/house_clock.h"
#include "automation/macros.h"
#include "automation/off_events.h"
#include "automation/once_events.h"
#include "automation/profile_change.h"
#include "automation/profile_switch.h"
#include "automation/scheduler.h"
#include "base/operations.h"
#include "core/device_ids.h"
#include "core/house_files.h"
#include "core/house_index.h"
#include "core/lists/room_list.h"
#include "core/module1.h"
#include "core/notices.h"
#include "core/program/house_shutdown.h"
#include "core/program/house_startup.h"
#include "core/program/steps.h"
#include "core/program/store_notices.h"
#include "core/settings.h"
#include "platform/platform.h"
#include "sun/location.h"
#include "ui/frm_main.h"
#include "ui/frm_server.h"
#include "ui/timer_driver.h"
#include "web/page_builder.h"
#include "web/request_handler.h"
#include "web/token_settings.h"
#include "web/web_server.h"
#include "x10/command_queue.h"
#include "x10/device_commands.h"
#include "x10/device_state.h"
#include "x10/incoming_traffic.h"
#include "x10/interface_finder.h"
#include "x10/seen_commands.h"
#include "x10/state_watch.h"
#include "x10/unsent_commands.h"

namespace homewarden {

// What holds a house and runs it without anybody: files, lists, power line, events, web server. The
// window is built on these; the service has nothing else.
struct HouseParts {
  // `progress` shows what start-up and shutdown are doing.
  HouseParts(const HousePlatform& platform, Operations::ErrorHandler on_error, Label& progress);
  HouseParts(const HouseParts&) = delete;
  HouseParts& operator=(const HouseParts&) = delete;
  ~HouseParts();

  FrmMain frm_main;
  FrmServer frm_server;

  Operations operations;
  Notices notices;
  Settings settings;
  HouseIndex house;
  DeviceIds device_ids;
  Module1 module1;
  DeviceState device_state;
  StateWatch state_watch;
  HouseFiles files;
  RoomList rooms;
  DeviceCommands commands;
  UnsentCommands unsent;
  StoreNotices store_notices;
  EventList events;
  EventMemory event_memory;
  OnceEvents once_events;
  EventCleanup cleanup;
  Location location;
  Scheduler scheduler;
  Macros macros;
  ProfileSwitch profile_switch;
  ProfileChange profile_change;
  OffEvents off_events;
  SeenCommands seen;
  CommandQueue queue;
  IncomingTraffic incoming;
  HouseClock clock;
  PageBuilder pages;
  WebServer web_server;
  TokenSettings tokens;
  RequestHandler requests;
  const std::string run;  // tells this run of the program from others
  Routes routes;
  ChangeLog change_log;
  RemoteCommands remote_commands;
  AutomationApi automation_api;
  HouseApi house_api;
  InterfaceFinder finder;
  Steps steps;
  HouseStartup startup;
  HouseShutdown shutdown;
  std::list<TimerDriver> timers;
};

}  // namespace homewarden
