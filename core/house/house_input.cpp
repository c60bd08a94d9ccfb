#include "core/house/house_input.h"

#include <algorithm>

#include "base/text.h"
#include "ui/fixed_nodes.h"

namespace homewarden {
namespace {

constexpr std::size_t kLongestName = 200;

std::string quoted(std::string_view text) {
  return "\"" + std::string(text) + "\"";
}

}  // namespace

std::string name_problem(std::string_view name) {
  if (name.find('~') != std::string_view::npos)
    return "A name cannot hold a tilde (~), which separates the names in the house's files.";
  if (std::any_of(name.begin(), name.end(),
                  [](char c) { return static_cast<unsigned char>(c) < 0x20; }))
    return "A name cannot hold tabs or line ends.";
  if (name.size() > kLongestName)
    return "A name cannot be longer than " + std::to_string(kLongestName) + " characters.";
  return "";
}

std::string room_name_problem(std::string_view name) {
  for (const char* node : kFixedNodes)
    if (name == node)
      return quoted(name) + " is an entry of the list already. Please choose another name.";
  return name_problem(name);
}

std::variant<Device, std::string> check_device(std::string_view room, std::string_view name,
                                               std::string_view house_code, std::string_view unit,
                                               const std::vector<std::string>& rooms) {
  const std::string wrong_name = name_problem(name);
  if (!wrong_name.empty()) return wrong_name;
  if (rooms.empty()) return std::string("Please add a room first.");
  if (std::find(rooms.begin(), rooms.end(), room) == rooms.end())
    return room.empty() ? std::string("Please choose the room of the device.")
                        : "There is no room " + quoted(room) + ". Please choose one from the list.";

  std::string letter(trim_blanks(house_code));
  if (letter.size() == 1 && letter[0] >= 'a' && letter[0] <= 'p')
    letter[0] = static_cast<char>(letter[0] - 0x20);
  Device device{std::string(room), std::string(name), letter, 1};
  if (!device.has_address())
    return quoted(house_code) + " is no house code. Please choose a letter from A to P.";
  device.unit = to_integer16(unit).value_or(0);
  if (!device.has_address())
    return quoted(unit) + " is no device number. Please choose a number from 1 to 16.";
  return device;
}

}  // namespace homewarden
