#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/signal.h"
#include "core/devices.h"
#include "core/settings.h"

namespace homewarden {

// The house as the room list describes it, parsed once. A device is one object here: whoever means
// one holds on to its room and name and asks again, since the index is replaced when the list
// changes. All lookups return nullptr when there is no such device; pointers are valid until the
// next set_lines().
class HouseIndex {
 public:
  explicit HouseIndex(Settings& settings) : settings_(settings) {}

  // Replaces the house by the lines of a room list, in the order in which they are to be searched.
  // Lines that are none of a room list are left out. `written` are the same lines in the order of
  // the file, for those who show the house in that order.
  void set_lines(const std::vector<std::string>& lines, const std::vector<std::string>& written);
  void set_lines(const std::vector<std::string>& lines) { set_lines(lines, lines); }

  // Names of the rooms in the order of the list, each once. A room exists when it has a line of its
  // own or a device.
  const std::vector<std::string>& rooms() const { return rooms_; }
  const std::vector<Device>& devices() const { return devices_; }
  // The same in the order of the file, as the menu of the web pages has them: rooms that have no
  // line of their own come last.
  const std::vector<std::string>& written_rooms() const { return written_rooms_; }
  std::vector<const Device*> written_devices() const;
  // In the order of the list; empty when no room has exactly this name.
  std::vector<const Device*> devices_in(std::string_view room) const;

  // The device that this one was when it was looked up: the same room, name and address. One of the
  // same name at another address may be another lamp.
  const Device* same_as(const Device& device) const;
  // By its key, with or without blanks, letter case ignored.
  const Device* by_key(std::string_view key) const;
  // By its label "Kitchen Lamp A3", or by "Kitchen Lamp" alone; letter case ignored, blanks not. Of
  // several the first in the list.
  const Device* by_label(std::string_view label) const;
  const Device* by_room_and_name(std::string_view roomdevice) const;
  // The first device at exactly this address, letter case ignored. Without one, the first whose
  // line holds "~A~1": a unit from 10 to 16 answers for unit 1.
  const Device* by_address(std::string_view house_code, int unit) const;
  // The first device whose line holds the text, letter case ignored: the first of all for "".
  const Device* holding(std::string_view text) const;

  // The type that is stored for the device's key; an appliance module when none is.
  const DeviceType& type_of(std::string_view device_key) const;

  // The house was replaced.
  Signal<> changed;

 private:
  // Positions of the first device with each lower-case text; filled when first asked for, since
  // most changes of the house need few of these.
  struct ByText {
    std::string (*text_of)(const Device&);
    std::unordered_map<std::string, std::size_t> positions;
  };

  const Device* found(ByText& map, const std::string& text) const;
  void order_as_written(const std::vector<std::string>& written);

  Settings& settings_;
  std::vector<std::string> rooms_;
  std::vector<Device> devices_;
  std::vector<std::string> lines_;  // of the devices
  std::vector<std::string> written_rooms_;
  std::vector<std::size_t> written_devices_;  // positions
  mutable ByText keys_{[](const Device& device) { return device.key(); }, {}};
  mutable ByText labels_{[](const Device& device) { return device.label(); }, {}};
  mutable ByText names_{[](const Device& device) { return device.room + " " + device.name; }, {}};
  mutable ByText addresses_{[](const Device& device) { return device.code(); }, {}};
};

}  // namespace homewarden
