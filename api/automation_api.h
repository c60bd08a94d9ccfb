#pragma once

#include "api/automation_changes.h"
#include "api/change_log.h"
#include "api/event_answers.h"
#include "api/event_routes.h"
#include "api/fact_routes.h"
#include "api/interface_now.h"
#include "api/macro_answers.h"
#include "api/profile_routes.h"
#include "api/routes.h"
#include "automation/off_events.h"
#include "automation/profile_change.h"
#include "automation/profile_switch.h"
#include "core/house_index.h"
#include "core/list_file.h"
#include "core/module1.h"
#include "platform/event_loop.h"
#include "platform/json_codec.h"
#include "sun/location.h"
#include "ui/frm_main.h"
#include "ui/timer_driver.h"
#include "x10/device_commands.h"

namespace homewarden {

// What programs read and do beside the devices: events, macros, profiles, sun, interface and the
// description of all this. Looks for changes at the beginning of each minute too.
class AutomationApi {
 public:
  AutomationApi(Routes& routes, ChangeLog& log, const JsonCodec& json, FrmMain& form,
                EventLoop& loop, Module1& module1, HouseIndex& house, ListFile& macros,
                OffEvents& off, const ProfileSwitch& profiles, ProfileChange& change,
                const Location& location, DeviceCommands& commands,
                const EventAnswers::DeviceId& id_of, EventRoutes::Run run);

  const EventAnswers& events() const { return events_; }
  InterfaceNow& interface() { return interface_; }

 private:
  EventAnswers events_;
  MacroAnswers macros_;
  InterfaceNow interface_;
  EventRoutes event_routes_;
  ProfileRoutes profile_routes_;
  FactRoutes fact_routes_;
  AutomationChanges changes_;
  Timer minute_;
  TimerDriver minute_driver_;
};

}  // namespace homewarden
