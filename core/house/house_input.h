#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/devices.h"

namespace homewarden {

// What keeps a text from being the name of a room or a device, in words for a person; "" when
// nothing does. An empty name is not looked at.
std::string name_problem(std::string_view name);

// What keeps a text from being the name of a new room.
std::string room_name_problem(std::string_view name);

// The device that a person describes, or what is wrong with it. `rooms` are the rooms there are.
// The house code may be typed in either case.
std::variant<Device, std::string> check_device(std::string_view room, std::string_view name,
                                               std::string_view house_code, std::string_view unit,
                                               const std::vector<std::string>& rooms);

}  // namespace homewarden
