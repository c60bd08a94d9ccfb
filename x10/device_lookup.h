#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ui/frm_main.h"

namespace homewarden {

struct RoomAndDevice {
  std::string room;
  std::string device;
};

// The device at an address: the first entry of the room list that contains "~A~1". An entry at unit
// 10 to 16 contains the address of unit 1, too, and is taken when it stands before.
std::optional<RoomAndDevice> find_device(const std::vector<std::string>& lst_rooms,
                                         const std::string& house, int unit);

// The first slot of the device panel that bears this name; nothing when none does.
std::optional<int> find_slot(const FrmMain& form, const std::string& device);

}  // namespace homewarden
