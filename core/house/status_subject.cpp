#include "core/house/status_subject.h"

#include <charconv>
#include <string>

namespace homewarden {
namespace {

constexpr std::string_view kHouseCode = "housecode ";
constexpr std::string_view kNotSent = "could not be sent";

}  // namespace

const Device* device_in_status(std::string_view text, const HouseIndex& house) {
  const auto named = text.find(kHouseCode);
  if (named != std::string_view::npos)
    text.remove_prefix(named + kHouseCode.size());
  else if (text.find(kNotSent) == std::string_view::npos)
    return nullptr;
  if (text.size() < 2) return nullptr;
  int unit = 0;
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data() + 1, end, unit);
  if (read.ec != std::errc() || (read.ptr != end && *read.ptr != ' ')) return nullptr;
  const Device* device = house.by_address(text.substr(0, 1), unit);
  return device && device->unit == unit ? device : nullptr;
}

void show_status_subject(StatusBar& status, const HouseIndex& house) {
  status.panel2.changed.connect([&status, &house] {
    const Device* device = device_in_status(status.panel2.get(), house);
    status.subject = device ? device->room + ", " + device->name : std::string();
  });
}

}  // namespace homewarden
