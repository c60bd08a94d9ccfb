#include "api/house_api.h"

#include <utility>

namespace homewarden {

HouseApi::HouseApi(Routes& routes, ChangeLog& log, HouseIndex& house, const DeviceIds& ids,
                   DeviceState& state, DeviceCommands& device_commands, RemoteCommands& commands,
                   Module1& module1, Notices& notices, const Clock& clock, WebServerControl& web,
                   HouseFacts facts)
    : view_(house, ids, state, device_commands, commands),
      changes_(log, view_, house, ids, state, device_commands, commands, notices),
      device_routes_(routes, view_, house, ids, commands, module1),
      house_routes_(routes, log, view_, notices, clock, web, std::move(facts)) {}

}  // namespace homewarden
