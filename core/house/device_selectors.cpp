#include "core/house/device_selectors.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "ui/fixed_nodes.h"

namespace homewarden {
namespace {

void offer(ComboBox& list, std::vector<std::string> items, const std::string& chosen, bool in_use) {
  if (!in_use) list.text = chosen;
  list.items = std::move(items);
}

std::string last_of(const std::vector<std::string>& items) {
  return items.empty() ? std::string() : items.back();
}

}  // namespace

DeviceSelectors::DeviceSelectors(EventPanel& events, MacroPanel& macros, AddDevicePanel& adding,
                                 HiddenLists& hidden)
    : events_(events), macros_(macros), adding_(adding), hidden_(hidden) {}

void DeviceSelectors::fill(const HouseIndex& house) {
  std::vector<std::string> codes;
  std::vector<std::string> labels;
  for (const Device& device : house.devices()) {
    codes.push_back(device.code());
    labels.push_back(device.label());
  }
  const std::string last_label = last_of(labels);
  const bool event_in_use = events_.frm_event.visible || events_.editor_open;
  offer(events_.lst_eventdevice, labels, last_label, event_in_use);
  offer(macros_.com_sel1, labels, last_label, macros_.frm_macros.visible);
  offer(macros_.com_sel2, std::move(labels), last_label, macros_.frm_macros.visible);
  hidden_.lst_codes.clear();
  hidden_.lst_codes.add_all(std::move(codes));

  std::vector<std::string> rooms = house.rooms();
  std::erase_if(rooms, [](const std::string& room) {
    return std::find(std::begin(kFixedNodes), std::end(kFixedNodes), room) != std::end(kFixedNodes);
  });
  const std::string last_room = last_of(rooms);
  std::stable_sort(rooms.begin(), rooms.end(), sorts_before);
  const bool kept =
      adding_.frm_adddevice.visible &&
      std::find(rooms.begin(), rooms.end(), adding_.lst_temproom.text.get()) != rooms.end();
  offer(adding_.lst_temproom, std::move(rooms), last_room, kept);
}

}  // namespace homewarden
