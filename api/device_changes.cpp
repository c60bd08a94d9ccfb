#include "api/device_changes.h"

#include <utility>

#include "api/house_routes.h"

namespace homewarden {

DeviceChanges::DeviceChanges(ChangeLog& log, const DeviceView& view, HouseIndex& house,
                             const DeviceIds& ids, DeviceState& state,
                             DeviceCommands& device_commands, RemoteCommands& commands,
                             Notices& notices)
    : log_(log), view_(view), house_(house) {
  state.changed.connect([this](const StateChange& change) { tell(house_.by_key(change.key)); });
  state.changed_elsewhere.connect([this] { look_at_all(true); });
  device_commands.sending_to.connect(
      [this](const std::string& key, bool) { tell(house_.by_key(key)); });
  commands.changed.connect([this, &ids](const RemoteCommand& command) {
    log_.publish("command", json_of(command));
    // What it is on the way to is told when it is.
    if (command.state != RemoteCommand::State::kSending) tell(ids.by_id(command.device));
  });
  house.changed.connect([this] {
    told_.clear();
    look_at_all(false);
    log_.publish("house", Json::Object{});
  });
  notices.changed.connect([this, &notices](const std::string&, const std::string&) {
    log_.publish("notices", homewarden::json_of(notices));
  });
}

void DeviceChanges::tell(const Device* device) {
  if (device == nullptr) return;
  Json now = view_.json_of(*device);
  Json& before = told_[*now.find("id")->text()];
  if (before == now) return;
  before = std::move(now);
  log_.publish("device", before);
}

void DeviceChanges::look_at_all(bool tell_changes) {
  for (const Device& device : house_.devices()) {
    if (house_.by_key(device.key()) != &device) continue;  // its id is that of an earlier one
    if (tell_changes) {
      tell(&device);
      continue;
    }
    Json now = view_.json_of(device);
    std::string id = *now.find("id")->text();
    told_.insert_or_assign(std::move(id), std::move(now));
  }
}

}  // namespace homewarden
