#include "core/house/house_removal.h"

#include <array>
#include <utility>

#include "automation/macro_line.h"
#include "base/lines.h"
#include "base/text.h"

namespace homewarden {
namespace {

// "kitchen lamp~a3"
std::string at_address(std::string_view name, std::string_view code) {
  return to_lower(std::string(name) + "~" + std::string(code));
}

std::string short_code(const Device& device) {
  return device.house_code + std::to_string(device.unit);
}

// The first three fields of an event, whatever else is on its line.
std::array<std::string_view, 3> device_fields(std::string_view line) {
  std::array<std::string_view, 3> fields;
  for (std::string_view& field : fields) {
    const std::size_t end = line.find('~');
    field = line.substr(0, end);
    line = end == std::string_view::npos ? std::string_view() : line.substr(end + 1);
  }
  return fields;
}

}  // namespace

HouseRemoval::HouseRemoval(Item item, std::string_view room_list) : item_(std::move(item)) {
  std::vector<ListLine> entries;
  LineReader reader(room_list);
  while (const auto line = reader.next())
    if (auto entry = parse_list_line(*line)) entries.push_back(std::move(*entry));
  for (const ListLine& entry : entries) has_exact_ = has_exact_ || is_exactly(entry);

  std::vector<const Device*> staying;
  for (const ListLine& entry : entries) {
    const bool goes = has_exact_ ? is_exactly(entry) : is_alike(entry);
    if (goes) ++lines_;
    if (!entry.device) continue;
    if (goes)
      add_going(*entry.device);
    else
      staying.push_back(&*entry.device);
  }
  if (going_.empty()) return;
  for (const Device* device : staying) {
    keys_.erase(to_lower(device->key()));
    const std::string name = device->roomdevice();
    if (names_going_.contains(to_lower(name)))
      staying_at_.insert(at_address(name, short_code(*device)));
  }
}

void HouseRemoval::add_going(const Device& device) {
  const std::string name = device.roomdevice();
  names_going_.insert(to_lower(name));
  going_at_.insert(at_address(name, short_code(device)));
  keys_.insert(to_lower(device.key()));
  going_.push_back(device);
}

std::string HouseRemoval::description() const {
  if (!item_.is_room())
    return item_.name() + (going_.empty() ? "" : " (" + short_code(going_.front()) + ")");
  if (going_.empty()) return item_.room + ", which has no devices";
  return item_.room + ", with " +
         (going_.size() == 1 ? "1 device" : std::to_string(going_.size()) + " devices");
}

bool HouseRemoval::is_exactly(const ListLine& entry) const {
  if (entry.room != item_.room) return false;
  return item_.is_room() || (entry.device && entry.device->tree_key() == item_.tree_key);
}

bool HouseRemoval::is_alike(const ListLine& entry) const {
  if (!equals_ignoring_case(entry.room, item_.room)) return false;
  return item_.is_room() ||
         (entry.device && equals_ignoring_case(entry.device->name, item_.device));
}

bool HouseRemoval::takes_room_line(std::string_view line) const {
  const auto entry = parse_list_line(line);
  return entry && (has_exact_ ? is_exactly(*entry) : is_alike(*entry));
}

bool HouseRemoval::takes_event(std::string_view line) const {
  const auto [name, house_code, unit] = device_fields(line);
  return names_going_.contains(to_lower(name)) &&
         !staying_at_.contains(at_address(name, std::string(house_code) + std::string(unit)));
}

bool HouseRemoval::takes_macro(std::string_view line) const {
  const auto macro = parse_macro(line);
  if (!macro) return false;
  const auto goes = [this](const MacroEnd& end) {
    const std::string device = at_address(end.name, end.code());
    return going_at_.contains(device) && !staying_at_.contains(device);
  };
  return goes(macro->trigger) || goes(macro->target);
}

}  // namespace homewarden
