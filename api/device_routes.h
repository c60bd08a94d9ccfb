#pragma once

#include "api/device_view.h"
#include "api/remote_commands.h"
#include "api/routes.h"
#include "core/devices.h"
#include "core/house_index.h"
#include "core/module1.h"

namespace homewarden {

// Devices and the commands to them: /devices, /commands.
class DeviceRoutes {
 public:
  DeviceRoutes(Routes& routes, const DeviceView& view, const HouseIndex& house,
               const DeviceIds& ids, RemoteCommands& commands, Module1& module1);

  // Has an order of an event carried out and answers with the command, when it has ended if the
  // body of the call says "wait".
  Task<Routes::Result> run_event(Device device, DeviceOrder order, ApiCall call);

 private:
  Task<Routes::Result> list(ApiCall call);
  Task<Routes::Result> one(ApiCall call);
  Task<Routes::Result> command(ApiCall call);
  Task<Routes::Result> commands(ApiCall call);
  Task<Routes::Result> one_command(ApiCall call);
  Task<Routes::Result> answer(RemoteCommands::Answer asked, bool wait);

  const DeviceView& view_;
  const HouseIndex& house_;
  const DeviceIds& ids_;
  RemoteCommands& commands_;
  Module1& module1_;
};

}  // namespace homewarden
