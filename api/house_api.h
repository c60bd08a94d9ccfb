#pragma once

#include "api/change_log.h"
#include "api/device_changes.h"
#include "api/device_routes.h"
#include "api/device_view.h"
#include "api/house_routes.h"
#include "api/remote_commands.h"
#include "api/routes.h"
#include "core/device_ids.h"
#include "core/house_index.h"
#include "core/module1.h"
#include "core/notices.h"
#include "platform/clock.h"
#include "platform/web_server_control.h"
#include "x10/device_commands.h"
#include "x10/device_state.h"

namespace homewarden {

// What programs read of the house and do to its devices.
class HouseApi {
 public:
  HouseApi(Routes& routes, ChangeLog& log, HouseIndex& house, const DeviceIds& ids,
           DeviceState& state, DeviceCommands& device_commands, RemoteCommands& commands,
           Module1& module1, Notices& notices, const Clock& clock, WebServerControl& web,
           HouseFacts facts);

  DeviceRoutes& devices() { return device_routes_; }

 private:
  DeviceView view_;
  DeviceChanges changes_;
  DeviceRoutes device_routes_;
  HouseRoutes house_routes_;
};

}  // namespace homewarden
