#include "core/house/house_input.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "base/code_page.h"
#include "base/text.h"
#include "core/settings.h"
#include "ui/fixed_nodes.h"

namespace homewarden {
namespace {

constexpr std::size_t kLongestName = 200;

constexpr std::string_view kLevelPrefix = "dim";

std::string quoted(std::string_view text) {
  return "\"" + std::string(text) + "\"";
}

bool same_name(std::string_view a, std::string_view b) {
  return equals_ignoring_case(trim_blanks(a), trim_blanks(b));
}

// The device under whose key, or the key of whose level, another one would be kept; nullptr for
// none.
const Device* sharing_state(const std::string& key, const HouseIndex& house) {
  if (const Device* same = house.by_key(key)) return same;
  if (const Device* level = house.by_key(std::string(kLevelPrefix) + key)) return level;
  if (!to_lower(key).starts_with(kLevelPrefix)) return nullptr;
  return house.by_key(key.substr(kLevelPrefix.size()));
}

}  // namespace

std::string name_problem(std::string_view name) {
  if (name.find('~') != std::string_view::npos)
    return "A name cannot hold a tilde (~), which separates the names in the house's files.";
  if (name.find('"') != std::string_view::npos)
    return "A name cannot hold a double quote (\"), which would break its links in the browser.";
  if (name.find(kUnknownCharacter) != std::string_view::npos)
    return quoted(name) +
           " holds a letter that cannot be kept: names use the letters of Western European "
           "languages.";
  if (std::any_of(name.begin(), name.end(),
                  [](char c) { return static_cast<unsigned char>(c) < 0x20; }))
    return "A name cannot hold tabs or line ends.";
  if (name.size() > kLongestName)
    return "A name cannot be longer than " + std::to_string(kLongestName) + " characters.";
  return "";
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

std::string type_code(std::string_view display_name) {
  for (const DeviceType& type : device_types())
    if (type.display_name == display_name) return std::string(type.code);
  return std::string(device_types().front().code);
}

std::string room_conflict(std::string_view room, const HouseIndex& house) {
  for (const char* node : kFixedNodes)
    if (same_name(room, node))
      return quoted(node) + " is an entry of the list already. Please choose another name.";
  for (const std::string& other : house.rooms())
    if (same_name(room, other))
      return "There is a room " + quoted(other) + " already. Please choose another name.";
  return "";
}

std::string device_conflict(const Device& device, const HouseIndex& house) {
  const auto& rooms = house.rooms();
  if (std::find(rooms.begin(), rooms.end(), device.room) == rooms.end())
    return "There is no room " + quoted(device.room) + " any more.";
  const std::string key = device.key();
  if (const Device* other = sharing_state(key, house)) {
    const std::string there = quoted(other->name) + " in the room " + quoted(other->room);
    if (same_name(device.room, other->room) && same_name(device.name, other->name))
      return "There is a device " + there + " already. Please choose another name.";
    return "A device " + quoted(device.name) + " in the room " + quoted(device.room) +
           " could not be told from " + there + ". Please choose another name.";
  }
  if (is_program_value(key))
    return "The program keeps something else under " + quoted(key) +
           ", the names of room and device together. Please choose another name.";
  return "";
}

std::optional<std::pair<std::string, int>> next_free_address(const HouseIndex& house,
                                                             std::string_view room) {
  constexpr int kLetters = 16;
  constexpr int kUnits = 16;
  std::array<std::array<bool, kUnits>, kLetters> taken{};
  std::array<int, kLetters> uses{};  // in the room
  for (const Device& device : house.devices()) {
    if (!device.has_address()) continue;
    const auto letter = static_cast<std::size_t>(to_lower(device.house_code)[0] - 'a');
    taken[letter][static_cast<std::size_t>(device.unit - 1)] = true;
    if (device.room == room) ++uses[letter];
  }
  std::array<std::size_t, kLetters> letters{};
  std::iota(letters.begin(), letters.end(), std::size_t{0});
  std::stable_sort(letters.begin(), letters.end(),
                   [&uses](std::size_t a, std::size_t b) { return uses[a] > uses[b]; });
  for (const std::size_t letter : letters) {
    const auto free = std::find(taken[letter].begin(), taken[letter].end(), false);
    if (free == taken[letter].end()) continue;
    return std::pair(std::string(1, static_cast<char>('A' + letter)),
                     static_cast<int>(free - taken[letter].begin()) + 1);
  }
  return std::nullopt;
}

const Device* at_same_address(const Device& device, const HouseIndex& house) {
  const auto& devices = house.devices();
  const auto found = std::find_if(devices.begin(), devices.end(), [&](const Device& other) {
    return other.unit == device.unit && equals_ignoring_case(other.house_code, device.house_code);
  });
  return found == devices.end() ? nullptr : &*found;
}

}  // namespace homewarden
