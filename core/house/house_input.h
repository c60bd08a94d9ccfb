#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "core/devices.h"
#include "core/house_index.h"

namespace homewarden {

// What keeps a text from being the name of a room or a device, in words for a person; "" when
// nothing does. An empty name is not looked at.
std::string name_problem(std::string_view name);

// The device that a person describes, or what is wrong with it in words for a person. `rooms` are
// the rooms that can be chosen. The house code, A to P, may be typed in either case; the unit is 1
// to 16.
std::variant<Device, std::string> check_device(std::string_view room, std::string_view name,
                                               std::string_view house_code, std::string_view unit,
                                               const std::vector<std::string>& rooms);

// The code of the type with this display name; an appliance module's for any other text.
std::string type_code(std::string_view display_name);

// What keeps a new room or device, whose own fields are in order, out of this house: it would take
// the name or the stored state of what is there. "" when nothing does. Two names are the same when
// only letter case or blanks at their ends differ.
std::string room_conflict(std::string_view room, const HouseIndex& house);
std::string device_conflict(const Device& device, const HouseIndex& house);

// An address that no device has: of the house code that the room uses most, or else the first one
// with room; "A1" in an empty house. Nothing when all 256 are taken.
std::optional<std::pair<std::string, int>> next_free_address(const HouseIndex& house,
                                                             std::string_view room);

// The first device that has the address of this one; nullptr when none has.
const Device* at_same_address(const Device& device, const HouseIndex& house);

}  // namespace homewarden
