#include "core/house/noted_type.h"

#include "base/lines.h"

namespace homewarden {
namespace {

constexpr const char* kSection = "change";
constexpr const char* kKey = "type";

std::string line_of(const Device& device) {
  return device.room + "~" + device.name + "~" + device.code();
}

}  // namespace

void note_type(Settings& settings, const Device& device, const std::string& type) {
  settings.write(kSection, kKey, line_of(device) + "~" + type);
}

void forget_noted_type(Settings& settings) {
  settings.remove(kSection, kKey);
}

void settle_type(Settings& settings, ListFile& rooms) {
  const std::string noted = settings.read(kSection, kKey, "");
  const auto end = noted.rfind('~');
  if (end == std::string::npos) return;
  const auto content = rooms.content();
  if (!content && rooms.exists()) return;
  LineReader reader(content ? *content : std::string_view());
  while (const auto line = reader.next()) {
    if (*line != std::string_view(noted).substr(0, end)) continue;
    const auto entry = parse_list_line(*line);
    if (entry && entry->device) settings.write("type", entry->device->key(), noted.substr(end + 1));
  }
  forget_noted_type(settings);
}

}  // namespace homewarden
