#pragma once

#include <string>

#include "base/task.h"
#include "platform/event_loop.h"
#include "ui/frm_main.h"
#include "x10/device_panel.h"
#include "x10/device_state.h"

namespace homewarden {

// Records and shows what a command did that no click and no event sent: one from the queue or from
// the power line.
class SeenCommands {
 public:
  SeenCommands(FrmMain& form, EventLoop& loop, DeviceState& state, DevicePanel& devices);

  // Nothing happens for an address at which there is no device. On and Off are recorded and told in
  // the status line; the picture shows "on" after an On and "off" after anything else.
  Task<void> record(std::string house, int unit, int function);

 private:
  FrmMain& form_;
  EventLoop& loop_;
  DeviceState& state_;
  DevicePanel& devices_;
};

}  // namespace homewarden
