#include "api/device_view.h"

#include <map>
#include <utility>

#include "base/code_page.h"
#include "base/text.h"
#include "core/time_text.h"

namespace homewarden {
namespace {

constexpr int kFullyOn = 100;

const char* name_of(RemoteCommand::State state) {
  switch (state) {
    case RemoteCommand::State::kWaiting:
      return "waiting";
    case RemoteCommand::State::kSending:
      return "sending";
    case RemoteCommand::State::kDone:
      return "done";
    case RemoteCommand::State::kNotSent:
      return "not_sent";
    default:
      return "dropped";
  }
}

int shown_level(const DeviceOrder& order) {
  return order.on ? order.level : 0;
}

Json order_json(const std::optional<DeviceOrder>& order) {
  if (!order) return {};
  return Json::Object{{"on", order->on}, {"level", shown_level(*order)}};
}

}  // namespace

DeviceView::DeviceView(const HouseIndex& house, const DeviceIds& ids, const DeviceState& state,
                       const DeviceCommands& device_commands, const RemoteCommands& commands)
    : house_(house),
      ids_(ids),
      state_(state),
      device_commands_(device_commands),
      commands_(commands) {}

Json DeviceView::json_of(const Device& device) const {
  const std::string key = device.key();
  const std::string& id = ids_.of(key);
  const DeviceType& type = house_.type_of(key);
  const bool on = state_.getlaststatus(key);
  const auto change = state_.last_change(key);
  Json source;
  if (change)
    source = std::string(homewarden::name_of(change->source));
  else if (state_.is_recorded(key))
    source = "elsewhere";
  return Json::Object{
      {"id", id},
      {"name", to_utf8(device.name)},
      {"room", to_utf8(device.room)},
      {"address", to_utf8(device.house_code) + std::to_string(device.unit)},
      {"switchable", device.has_address()},
      {"type", type.code},
      {"dimmable", type.dimmable},
      {"on", on},
      {"level", on ? (type.dimmable ? state_.level(key) : kFullyOn) : 0},
      {"not_sent", order_json(state_.not_sent(key))},
      {"pending", pending(id, key)},
      {"changed", change ? Json(iso_text(change->at)) : Json()},
      {"source", source},
      {"page_key", to_utf8(key)},
  };
}

// What waits is what the device comes to in the end.
Json DeviceView::pending(const std::string& id, const std::string& key) const {
  const auto json = [](Json command, const char* state, const std::optional<DeviceOrder>& order) {
    return Json::Object{{"command", std::move(command)},
                        {"state", state},
                        {"on", order ? Json(order->on) : Json()},
                        {"level", order ? Json(shown_level(*order)) : Json()}};
  };
  if (const auto waiting = commands_.last_waiting(id))
    return json(waiting->id, "waiting", waiting->order);
  const auto& on_its_way = device_commands_.on_its_way();
  if (!on_its_way || !equals_ignoring_case(on_its_way->key, key)) return {};
  const auto sent = commands_.on_the_line();
  return json(sent && sent->device == id ? Json(sent->id) : Json(), "sending", on_its_way->order);
}

Json DeviceView::rooms() const {
  std::map<std::string, Json::Array> devices;
  for (const Device* device : house_.written_devices())
    devices[device->room].push_back(json_of(*device));
  Json::Array rooms;
  for (const std::string& room : house_.written_rooms())
    rooms.push_back(Json::Object{{"name", to_utf8(room)},
                                 {"slug", to_utf8(without_blanks(room))},
                                 {"devices", std::move(devices[room])}});
  return rooms;
}

Json json_of(const RemoteCommand& command) {
  const auto& order = command.order;
  return Json::Object{
      {"id", command.id},
      {"device", command.device.empty() ? Json() : Json(command.device)},
      {"command", name_of(command.act)},
      {"on", order ? Json(order->on) : Json()},
      {"level", order ? Json(shown_level(*order)) : Json()},
      {"state", name_of(command.state)},
      {"asked", iso_text(command.asked)},
      {"ended", command.ended ? Json(iso_text(*command.ended)) : Json()},
      {"detail", command.detail},
  };
}

}  // namespace homewarden
