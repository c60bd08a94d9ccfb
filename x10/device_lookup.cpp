#include "x10/device_lookup.h"

#include "base/text.h"

namespace homewarden {

std::optional<RoomAndDevice> find_device(const std::vector<std::string>& lst_rooms,
                                         const std::string& house, int unit) {
  const std::string address = "~" + house + "~" + std::to_string(unit);
  for (const std::string& line : lst_rooms) {
    if (!contains_ignoring_case(line, address)) continue;
    const auto first = line.find('~');
    const auto second = line.find('~', first + 1);
    return RoomAndDevice{line.substr(0, first), line.substr(first + 1, second - first - 1)};
  }
  return std::nullopt;
}

std::optional<int> find_slot(const FrmMain& form, const std::string& device) {
  for (int slot = 0; slot < FrmMain::kSlots; ++slot)
    if (form.devicename[static_cast<std::size_t>(slot)].caption.get() == device) return slot;
  return std::nullopt;
}

}  // namespace homewarden
