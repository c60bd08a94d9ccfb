#pragma once

#include <string>

#include "base/task.h"
#include "core/devices.h"
#include "core/house_index.h"
#include "platform/event_loop.h"
#include "ui/controls.h"
#include "x10/device_state.h"

namespace homewarden {

// What commands did that nobody pressed and no event sent: those from the queue and those from the
// power line.
class SeenCommands {
 public:
  SeenCommands(StatusBar& status, HouseIndex& house, EventLoop& loop, DeviceState& state);

  // A command that came from the power line. On and Off are recorded for the device at the address
  // and told in the status line; any other function changes nothing that is recorded. Nothing
  // happens for an address at which there is no device.
  Task<void> record(std::string house, int unit, int function);

  // Tells in the status line, with the time, that the device has turned on or off. Nothing is
  // recorded. Returns when the line has been painted.
  Task<void> tell(std::string device_name, bool on);

 private:
  StatusBar& status_;
  HouseIndex& house_;
  EventLoop& loop_;
  DeviceState& state_;
};

}  // namespace homewarden
