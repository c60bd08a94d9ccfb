#include "core/house_index.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "base/text.h"

namespace homewarden {
namespace {

std::string address_text(std::string_view house_code, int unit) {
  return std::string(house_code) + "~" + std::to_string(unit);
}

}  // namespace

void HouseIndex::set_lines(const std::vector<std::string>& lines,
                           const std::vector<std::string>& written) {
  rooms_.clear();
  devices_.clear();
  lines_.clear();
  devices_.reserve(lines.size());
  lines_.reserve(lines.size());
  for (ByText* map : {&keys_, &labels_, &names_, &addresses_}) map->positions.clear();

  std::unordered_set<std::string> known_rooms;
  for (const std::string& line : lines) {
    auto entry = parse_list_line(line);
    if (!entry) continue;
    if (known_rooms.insert(entry->room).second) rooms_.push_back(entry->room);
    if (!entry->device) continue;
    devices_.push_back(std::move(*entry->device));
    lines_.push_back(line);
  }
  order_as_written(written);
  changed();
}

void HouseIndex::order_as_written(const std::vector<std::string>& written) {
  // A line that stands there twice is two devices.
  std::unordered_multimap<std::string_view, std::size_t> positions;
  for (std::size_t i = 0; i < lines_.size(); ++i) positions.emplace(lines_[i], i);
  written_rooms_.clear();
  written_devices_.clear();
  std::unordered_set<std::string> known_rooms;
  for (const std::string& line : written) {
    if (const auto device = positions.extract(line)) {
      written_devices_.push_back(device.mapped());
      continue;
    }
    const auto entry = parse_list_line(line);
    if (entry && known_rooms.insert(entry->room).second) written_rooms_.push_back(entry->room);
  }
  for (const std::size_t position : written_devices_) {
    const std::string& room = devices_[position].room;
    if (known_rooms.insert(room).second) written_rooms_.push_back(room);
  }
}

std::vector<const Device*> HouseIndex::written_devices() const {
  std::vector<const Device*> result;
  result.reserve(written_devices_.size());
  for (const std::size_t position : written_devices_) result.push_back(&devices_[position]);
  return result;
}

std::vector<const Device*> HouseIndex::devices_in(std::string_view room) const {
  std::vector<const Device*> result;
  for (const Device& device : devices_)
    if (device.room == room) result.push_back(&device);
  return result;
}

const Device* HouseIndex::found(ByText& map, const std::string& text) const {
  if (map.positions.empty())
    for (std::size_t i = 0; i < devices_.size(); ++i)
      map.positions.try_emplace(to_lower(map.text_of(devices_[i])), i);
  const auto entry = map.positions.find(to_lower(text));
  return entry == map.positions.end() ? nullptr : &devices_[entry->second];
}

const Device* HouseIndex::same_as(const Device& device) const {
  const auto found = std::find(devices_.begin(), devices_.end(), device);
  return found == devices_.end() ? nullptr : &*found;
}

const Device* HouseIndex::by_key(std::string_view key) const {
  return found(keys_, without_blanks(key));
}

const Device* HouseIndex::by_label(std::string_view label) const {
  return found(labels_, std::string(label));
}

const Device* HouseIndex::by_room_and_name(std::string_view roomdevice) const {
  return found(names_, std::string(roomdevice));
}

const Device* HouseIndex::by_address(std::string_view house_code, int unit) const {
  const std::string address = address_text(house_code, unit);
  const Device* exact = found(addresses_, address);
  return exact ? exact : holding("~" + address);
}

const Device* HouseIndex::holding(std::string_view text) const {
  for (std::size_t i = 0; i < lines_.size(); ++i)
    if (contains_ignoring_case(lines_[i], text)) return &devices_[i];
  return nullptr;
}

const DeviceType& HouseIndex::type_of(std::string_view key) const {
  return device_type(settings_.read("type", without_blanks(key), "switch"));
}

}  // namespace homewarden
