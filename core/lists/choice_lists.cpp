#include "core/lists/choice_lists.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "core/devices.h"

namespace homewarden {
namespace {

void fill(ComboBox& list, std::vector<std::string> items, const std::string& chosen) {
  list.items = std::move(items);
  list.text = chosen;
}

void offer(ComboBox& list, std::vector<std::string> items) {
  if (items == list.items.get()) return;
  const bool stays = std::find(items.begin(), items.end(), list.text.get()) != items.end();
  const std::string text = stays ? list.text.get() : "00";
  list.items = std::move(items);
  list.text = text;
}

std::vector<std::string> numbers(int first, int last) {
  std::vector<std::string> result;
  for (int number = first; number <= last; ++number) result.push_back(two_digits(number));
  return result;
}

}  // namespace

void fill_device_lists(AddDevicePanel& panel) {
  std::vector<std::string> letters;
  std::vector<std::string> units;
  for (char letter = 'A'; letter <= 'P'; ++letter) letters.emplace_back(1, letter);
  for (int unit = 1; unit <= 16; ++unit) units.push_back(std::to_string(unit));
  fill(panel.lst_housecode, std::move(letters), "A");
  fill(panel.lst_device, std::move(units), "1");

  std::vector<std::string> types;
  for (const DeviceType& type : device_types()) types.emplace_back(type.display_name);
  const std::string first = types.front();
  fill(panel.lst_devicetype, std::move(types), first);
}

void fill_macro_lists(MacroPanel& panel) {
  fill(panel.mac_whattodo, {"Turn On", "Turn Off"}, "Turn On");
  fill(panel.mac_event, {"On", "Off", "Dim"}, "On");
}

void fill_event_columns(EventPanel& panel) {
  panel.ListView1.columns =
      std::vector<ListColumn>{{"Device", 2850}, {"", 350},        {"", 500},      {"Dim", 900},
                              {"Time", 1000},   {"Action", 1000}, {"Freq", 1000}, {"Days", 1070}};
}

void fill_event_lists(EventPanel& panel) {
  fill(panel.lst_action, {"on", "off"}, "on");
  fill(panel.lst_freq, {"once", "daily"}, "daily");
  auto hours = numbers(0, 23);
  hours.insert(hours.end(), {"sRise", "sSet"});
  fill(panel.lst_hour, std::move(hours), "00");
  fill(panel.lst_min, numbers(0, 59), "00");
}

void fill_minutes(EventPanel& panel) {
  offer(panel.lst_min, numbers(0, 59));
}

void fill_sun_offsets(EventPanel& panel) {
  offer(panel.lst_min, {"-3", "-2", "-1", "00", "+1", "+2", "+3"});
}

void fill_dim_list(EventPanel& panel) {
  std::vector<std::string> levels;
  for (int level = 10; level <= 100; level += 5) levels.push_back(std::to_string(level) + "%");
  fill(panel.lst_dim, std::move(levels), "100%");
}

void preset_time(EventPanel& panel, const LocalTime& now) {
  panel.lst_hour.text = two_digits(now.hour);
  panel.lst_min.text = two_digits(now.minute);
}

}  // namespace homewarden
