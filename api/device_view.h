#pragma once

#include <string>

#include "api/remote_commands.h"
#include "base/json.h"
#include "core/device_ids.h"
#include "core/devices.h"
#include "core/house_index.h"
#include "x10/device_commands.h"
#include "x10/device_state.h"

namespace homewarden {

// What programs are told of devices and of commands to them.
class DeviceView {
 public:
  DeviceView(const HouseIndex& house, const DeviceIds& ids, const DeviceState& state,
             const DeviceCommands& device_commands, const RemoteCommands& commands);

  // Of a device of the house.
  Json json_of(const Device& device) const;
  // All rooms with their devices, in the order of the room list.
  Json rooms() const;

 private:
  Json pending(const std::string& id, const std::string& key) const;

  const HouseIndex& house_;
  const DeviceIds& ids_;
  const DeviceState& state_;
  const DeviceCommands& device_commands_;
  const RemoteCommands& commands_;
};

// A command as programs are told of it.
Json json_of(const RemoteCommand& command);

}  // namespace homewarden
