#pragma once

#include <string>
#include <unordered_map>

#include "api/change_log.h"
#include "api/device_view.h"
#include "api/remote_commands.h"
#include "core/device_ids.h"
#include "core/house_index.h"
#include "core/notices.h"
#include "x10/device_commands.h"
#include "x10/device_state.h"

namespace homewarden {

// Tells the readers of the stream what changes of the devices, whoever changed it; of a device that
// is as it was told last, nothing.
class DeviceChanges {
 public:
  DeviceChanges(ChangeLog& log, const DeviceView& view, HouseIndex& house, const DeviceIds& ids,
                DeviceState& state, DeviceCommands& device_commands, RemoteCommands& commands,
                Notices& notices);

 private:
  void tell(const Device* device);
  void look_at_all(bool tell_changes);

  ChangeLog& log_;
  const DeviceView& view_;
  HouseIndex& house_;
  std::unordered_map<std::string, Json> told_;  // by id
};

}  // namespace homewarden
