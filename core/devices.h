#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace homewarden {

struct Room {
  std::string name;
};

struct Device {
  std::string room;
  std::string name;
  std::string house_code;  // as the file has it; only "A" to "P" can be switched
  int unit = 0;            // only 1 to 16 can be switched

  // Names the device's type, state and level in the settings: "KitchenTableLamp". Two devices of
  // different names may have the same one in a file written by hand; they then share all three.
  std::string key() const;
  // What events and macros call it: "Kitchen Table Lamp". Blanks at its end are not kept there.
  std::string roomdevice() const;
  // Entries of the event and macro editors: "Kitchen Table Lamp A3". Blanks are kept as they are.
  std::string label() const;
  // Entries of `lst_codes`: "A~3". The address as the file has it, also one that does not exist.
  std::string code() const;
  // Key of the node in the navigation tree: "Table Lamp~A~3". Devices of two rooms may have the
  // same; the node of the second one then has another key.
  std::string tree_key() const;
  // Whether the power line has such an address: A to P in either letter case, 1 to 16. What has
  // none is shown and never sent.
  bool has_address() const;

  bool operator==(const Device&) const = default;
};

// Device::key() of a room and a device name: every blank is left out, letter case stays.
std::string device_key(std::string_view room, std::string_view device);

// One line of the room and device list.
struct ListLine {
  std::string room;
  std::optional<Device> device;  // nothing on a room line
};

// Nothing for a line that is empty or no line of the list: too few fields, a unit that is no
// integer, control characters, more than kLongestLine bytes.
inline constexpr std::size_t kLongestLine = 1024;
std::optional<ListLine> parse_list_line(std::string_view line);

struct DeviceType {
  std::string_view display_name;
  std::string_view code;
  bool dimmable;
};

// The five types in the order in which they are offered; the first is an appliance module, which is
// taken when no type is known.
const std::array<DeviceType, 5>& device_types();

// The type with this code; an appliance module for any other text.
const DeviceType& device_type(std::string_view code);

// The picture of a device within the application folder: "html/bulbon.gif". Whether the file is
// there is not looked at.
std::string device_picture(const DeviceType& type, bool on);

}  // namespace homewarden
