#include "core/devices.h"

#include <algorithm>

#include "base/text.h"

namespace homewarden {

std::string device_key(std::string_view room, std::string_view device) {
  return without_blanks(std::string(room) + std::string(device));
}

std::string Device::key() const {
  return device_key(room, name);
}

std::string Device::roomdevice() const {
  std::string text = room + " " + name;
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

std::string Device::label() const {
  return room + " " + name + " " + house_code + std::to_string(unit);
}

std::string Device::code() const {
  return house_code + "~" + std::to_string(unit);
}

std::string Device::tree_key() const {
  return name + "~" + code();
}

bool Device::has_address() const {
  if (house_code.size() != 1 || unit < 1 || unit > 16) return false;
  const char letter = to_lower(house_code)[0];
  return letter >= 'a' && letter <= 'p';
}

std::optional<ListLine> parse_list_line(std::string_view line) {
  if (line.empty() || line.size() > kLongestLine) return std::nullopt;
  const auto is_control = [](char c) { return static_cast<unsigned char>(c) < 0x20; };
  if (std::any_of(line.begin(), line.end(), is_control)) return std::nullopt;

  const std::size_t first = line.find('~');
  if (first == std::string_view::npos) return std::nullopt;
  ListLine result;
  result.room = line.substr(0, first);
  if (line.find("~~~") != std::string_view::npos) return result;

  const std::size_t second = line.find('~', first + 1);
  if (second == std::string_view::npos) return std::nullopt;
  const std::size_t third = line.find('~', second + 1);
  if (third == std::string_view::npos) return std::nullopt;
  const auto unit = to_integer16(line.substr(third + 1));
  if (!unit) return std::nullopt;

  Device device;
  device.room = result.room;
  device.name = line.substr(first + 1, second - first - 1);
  device.house_code = line.substr(second + 1, third - second - 1);
  device.unit = *unit;
  result.device = std::move(device);
  return result;
}

const std::array<DeviceType, 5>& device_types() {
  static constexpr std::array<DeviceType, 5> kTypes = {{
      {"Appliance Module (not dimmable)", "switch", false},
      {"Light Module (dimmable)", "bulb", true},
      {"Fan (appliance module)", "fan", false},
      {"Lamp Module (dimmable)", "bulb2", true},
      {"Radio (appliance module)", "radio", false},
  }};
  return kTypes;
}

const DeviceType& device_type(std::string_view code) {
  const auto& types = device_types();
  const auto found = std::find_if(types.begin(), types.end(),
                                  [code](const DeviceType& type) { return type.code == code; });
  return found == types.end() ? types.front() : *found;
}

std::string device_picture(const DeviceType& type, bool on) {
  return "html/" + std::string(type.code) + (on ? "on.gif" : "off.gif");
}

}  // namespace homewarden
