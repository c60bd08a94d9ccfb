#pragma once

#include "automation/event_cleanup.h"
#include "automation/event_list.h"
#include "automation/profile_switch.h"
#include "base/operations.h"
#include "base/task.h"
#include "core/module1.h"
#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "ui/frm_main.h"

namespace homewarden {

// The profiles panel: choosing a profile exchanges the event list.
class Profiles {
 public:
  Profiles(FrmMain& form, Operations& operations, EventLoop& loop, Module1& module1,
           Dialogs& dialogs, ProfileSwitch& profiles, EventList& events, EventCleanup& cleanup);

  Task<void> profile_chosen();

 private:
  Task<bool> exchange(std::string name);

  FrmMain& form_;
  EventLoop& loop_;
  Module1& module1_;
  Dialogs& dialogs_;
  ProfileSwitch& switch_;
  EventList& events_;
  EventCleanup& cleanup_;
};

}  // namespace homewarden
