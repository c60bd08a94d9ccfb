#pragma once

#include <string_view>

#include "core/house_index.h"
#include "ui/controls.h"

namespace homewarden {

// The device whose address a status text names, as in "Turned ON device with housecode A3 at
// 15:40:52" or "A3 On could not be sent"; nullptr when it names none, or none of the house.
const Device* device_in_status(std::string_view text, const HouseIndex& house);

// Says in the status bar which room and device its line tells of. To be called once.
void show_status_subject(StatusBar& status, const HouseIndex& house);

}  // namespace homewarden
