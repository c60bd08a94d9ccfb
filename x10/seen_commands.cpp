#include "x10/seen_commands.h"

#include "core/time_text.h"
#include "platform/interface_control.h"
#include "platform/waiting.h"
#include "x10/device_lookup.h"

namespace homewarden {

SeenCommands::SeenCommands(FrmMain& form, EventLoop& loop, DeviceState& state, DevicePanel& devices)
    : form_(form), loop_(loop), state_(state), devices_(devices) {}

Task<void> SeenCommands::record(std::string house, int unit, int function) {
  const auto found = find_device(form_.lst_rooms.items, house, unit);
  if (!found) co_return;
  const std::string key = found->room + found->device;
  const bool on = function == kX10On;
  if (on || function == kX10Off) {
    int level = kNoLevel;
    state_.setstatus(key, on ? "on" : "off", level);
    form_.Statusbar.panel2 = "Incoming message, " + found->device +
                             (on ? " has turned on at " : " has turned off at ") +
                             h_mm_ss(loop_.local_time());
    co_await pending_events(loop_);
  }
  const auto slot = find_slot(form_, found->device);
  if (!slot) co_return;
  if (on)
    devices_.setpictureon(*slot, key);
  else
    devices_.setpictureoff(*slot, key);
}

}  // namespace homewarden
