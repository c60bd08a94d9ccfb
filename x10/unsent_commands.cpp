#include "x10/unsent_commands.h"

#include <algorithm>
#include <utility>

#include "base/flag_guard.h"
#include "core/asking.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

// So many are named, and the others counted.
constexpr std::size_t kNamed = 8;
// Marks that are read in one turn of the loop.
constexpr std::size_t kAtATime = 1000;

std::string summary_of(const std::vector<std::string>& names) {
  const std::size_t count = names.size();
  if (count == 0) return "";
  std::string text =
      std::to_string(count) + (count == 1 ? " command" : " commands") + " could not be sent: ";
  for (std::size_t i = 0; i < std::min(count, kNamed); ++i) text += (i == 0 ? "" : ", ") + names[i];
  if (count > kNamed) text += " and " + std::to_string(count - kNamed) + " more";
  return text + ".";
}

}  // namespace

UnsentCommands::UnsentCommands(StatusBar& status, Operations& operations, EventLoop& loop,
                               HouseIndex& house, DeviceState& state, DeviceCommands& commands,
                               Dialogs& dialogs, Registry& registry)
    : status_(status), loop_(loop), house_(house), state_(state), dialogs_(dialogs) {
  house.changed.connect([this, &operations] { begin_to_read(operations); });
  // Marks that could not be read before, or that another process has written.
  registry.changed.connect([this, &operations](RegistryRoot root) {
    if (root != RegistryRoot::kLocalMachine) return;
    known_.clear();
    begin_to_read(operations);
  });
  state.changed.connect([this](const StateChange& change) {
    const Device* device = house_.by_key(change.key);
    if (!device) return;
    if (change.sent)
      devices_.erase(device->key());
    else
      devices_.insert(device->key());
    show();
  });
  commands.tried.connect([this](const SwitchTarget& target, bool sent) { tried(target, sent); });
  status.unsent.click.connect([this, &operations] { operations.start(ask_to_dismiss()); });
}

void UnsentCommands::begin_to_read(Operations& operations) {
  operations.end(reading_);
  reading_ = operations.start(read_marks());
}

// Only of devices that are new, and some at a time: a house may have thousands.
Task<void> UnsentCommands::read_marks() {
  std::unordered_set<std::string> known;
  for (std::size_t i = 0; i < house_.devices().size(); ++i) {
    const std::string key = house_.devices()[i].key();
    if (!known_.contains(key)) {
      if (state_.not_sent(key))
        devices_.insert(key);
      else
        devices_.erase(key);
    }
    known.insert(key);
    if ((i + 1) % kAtATime == 0) co_await pending_events(loop_);
  }
  known_ = std::move(known);
  show();
}

void UnsentCommands::tried(const SwitchTarget& target, bool sent) {
  std::string address = target.house_code + std::to_string(target.unit);
  if (address[0] >= 'a' && address[0] <= 'p')
    address[0] = static_cast<char>(address[0] - 'a' + 'A');
  // What the power line does not have could never be made good.
  const bool is_address = Device{"", "", target.house_code, target.unit}.has_address();
  if (sent || house_.by_key(target.key) || !is_address)
    addresses_.erase(address);
  else
    addresses_.insert(address);
  show();
}

std::vector<std::string> UnsentCommands::names() {
  std::erase_if(devices_, [this](const std::string& key) { return !house_.by_key(key); });
  std::vector<std::string> names;
  for (const std::string& key : devices_) names.push_back(house_.by_key(key)->roomdevice());
  names.insert(names.end(), addresses_.begin(), addresses_.end());
  return names;
}

void UnsentCommands::show() {
  const auto unsent = names();
  summary_ = summary_of(unsent);
  status_.panel3_tip = summary_;
  status_.unsent.caption = unsent.empty() ? "" : std::to_string(unsent.size()) + " not sent";
  status_.unsent.tool_tip = summary_.empty() ? "" : summary_ + " Click here to dismiss.";
  status_.unsent.visible = !unsent.empty();
}

Task<void> UnsentCommands::ask_to_dismiss() {
  if (asking_ || summary_.empty()) co_return;
  const FlagGuard asking(asking_);
  const auto devices = devices_;
  const auto addresses = addresses_;
  std::string text = summary_ +
                     "\n\nForget that? Nothing is switched by it; \"Try again\" on the card of a "
                     "device sends its command once more.";
  const bool forget = co_await ask(dialogs_, std::move(text), "Not sent", Answer::kNo);
  if (!forget) co_return;
  // What failed meanwhile was not asked about.
  for (const auto& key : devices)
    if (devices_.contains(key))
      state_.setstatus(key, {state_.getlaststatus(key), state_.level(key)}, Source::kWindow);
  for (const auto& address : addresses) addresses_.erase(address);
  show();
}

}  // namespace homewarden
