#pragma once

#include <list>

#include "automation/event_deletion.h"
#include "automation/event_editor.h"
#include "automation/event_outlook.h"
#include "automation/macro_editor.h"
#include "automation/macro_outlook.h"
#include "automation/profile_preview.h"
#include "automation/profiles.h"
#include "automation/run_event_now.h"
#include "base/operations.h"
#include "core/house/deletion_undo.h"
#include "core/house/finder.h"
#include "core/house/first_run.h"
#include "core/house/home_overview.h"
#include "core/house/home_times.h"
#include "core/house/house_changes.h"
#include "core/house/house_deletion.h"
#include "core/house/house_editor.h"
#include "core/house/interface_overview.h"
#include "core/house/message_list.h"
#include "core/house/message_sources.h"
#include "core/house/navigation_tree.h"
#include "core/house/room_editing.h"
#include "core/house/tree_levels.h"
#include "core/messages.h"
#include "core/program/house_parts.h"
#include "core/program/service_mode.h"
#include "core/program/shutdown.h"
#include "core/program/start_options.h"
#include "core/program/startup.h"
#include "platform/platform.h"
#include "ui/frm_main.h"
#include "ui/frm_server.h"
#include "ui/frm_systray.h"
#include "ui/frm_wait.h"
#include "ui/timer_driver.h"
#include "ui/tray.h"
#include "ui/window_services.h"
#include "voice/speech.h"
#include "x10/device_panel.h"
#include "x10/presses.h"

namespace homewarden {

// The program with a window: what holds the house, and what a person sees of it and does with it.
// Faces show the three forms.
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

  // Whether the service is to have the house when this copy leaves it.
  bool wants_service() const { return frm_main.chk_service.checked || startup_.owes_service(); }

  FrmWait frm_wait;
  FrmSysTray frmSysTray;

 private:
  Messages messages_;
  NotedDialogs dialogs_;
  Platform platform_;  // with these dialogs
  HouseParts house_;

 public:
  FrmMain& frm_main = house_.frm_main;
  FrmServer& frm_server = house_.frm_server;

 private:
  Presses presses_;
  DevicePanel devices_;
  Speech speech_;
  NavigationTree tree_;
  TreeLevels tree_levels_;
  InterfaceOverview interface_overview_;
  HomeOverview home_overview_;
  HomeTimes home_times_;
  FirstRun first_run_;
  EventEditor editor_;
  EventDeletion event_deletion_;
  RunEventNow run_event_now_;
  EventOutlook event_outlook_;
  MacroEditor macro_editor_;
  MacroOutlook macro_outlook_;
  Profiles profiles_;
  Finder anything_;
  ProfilePreview profile_preview_;
  HouseEditor house_editor_;
  DeletionUndo deletion_undo_;
  HouseDeletion house_deletion_;
  HouseChanges house_changes_;
  RoomEditing room_editing_;
  WindowServices window_;
  Tray tray_;
  ServiceCall service_call_;
  ServiceMode service_mode_;
  StartOptions start_options_;
  Startup startup_;
  Shutdown shutdown_;
  MessageList message_list_;
  std::list<TimerDriver> timers_;
};

}  // namespace homewarden
