#include "x10/device_state.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include "base/text.h"
#include "core/settings.h"

namespace homewarden {
namespace {

const std::string kNotSentKey = kMachineKey + "\\NotSent";
// "1795505400123 web 40": when, in milliseconds since 1970, by what, and the state that this is
// about: another one has been recorded by somebody who does not know of this.
const std::string kChangedKey = kMachineKey + "\\Changed";
const char* const kOffLevel = "20";
constexpr std::int64_t kLatest = 253'402'300'799'999;  // the end of the year 9999

std::string text_of(DeviceOrder order) {
  return order.on ? std::to_string(order.level) : "off";
}

// The value that a device's state lies under. An event or a list made by hand may name a device
// like a value of the program: no name has a tilde, so that stays apart.
std::string value_name(const std::string& key) {
  return is_program_value(key) ? key + "~" : key;
}

constexpr std::array<std::string_view, kSources> kSourceNames{"window", "event",      "macro",
                                                              "web",    "power_line", "voice"};

}  // namespace

std::string_view name_of(Source source) {
  return kSourceNames[static_cast<std::size_t>(source)];
}

void DeviceState::setstatus(const std::string& keyname, DeviceOrder state, Source source,
                            bool sent) {
  std::string key = without_blanks(keyname);
  if (const auto now = renamed_.find(to_lower(key)); now != renamed_.end()) key = now->second;
  const auto write = [this](const std::string& folder, const std::string& name,
                            const std::string& text) {
    module1_.regwrite(RegistryRoot::kLocalMachine, folder, name, text);
  };
  write(kMachineKey, value_name(key), state.on ? "True" : "False");
  write(kMachineKey, "dim" + key, state.on ? std::to_string(state.level) : kOffLevel);
  if (!sent)
    write(kNotSentKey, key, text_of(state));
  else if (not_sent(key))
    module1_.regdelete(RegistryRoot::kLocalMachine, kNotSentKey, key);
  write(kChangedKey, key,
        std::to_string(clock_.system_time().time_since_epoch().count()) + " " +
            std::string(name_of(source)) + " " + text_of(state));
  changed({key, state, source, sent});
}

bool DeviceState::getlaststatus(const std::string& keyname) const {
  return module1_.regread(RegistryRoot::kLocalMachine, kMachineKey,
                          value_name(without_blanks(keyname)), "False") == "True";
}

int DeviceState::level(const std::string& keyname) const {
  const std::string text = module1_.regread(RegistryRoot::kLocalMachine, kMachineKey,
                                            "dim" + without_blanks(keyname), "100");
  return std::clamp(to_integer16(text).value_or(100), 0, 100);
}

std::optional<DeviceOrder> DeviceState::not_sent(const std::string& keyname) const {
  const std::string text =
      module1_.regread(RegistryRoot::kLocalMachine, kNotSentKey, without_blanks(keyname), "");
  if (text.empty()) return std::nullopt;
  if (text == "off") return DeviceOrder{false};
  return DeviceOrder{true, std::clamp(to_integer16(text).value_or(100), 0, 100)};
}

std::optional<LastChange> DeviceState::last_change(const std::string& keyname) const {
  const std::string text =
      module1_.regread(RegistryRoot::kLocalMachine, kChangedKey, without_blanks(keyname), "");
  const auto first = text.find(' ');
  const auto second = text.rfind(' ');
  if (first == second) return std::nullopt;
  std::int64_t time = 0;
  const char* const end = text.data() + first;
  if (std::from_chars(text.data(), end, time).ptr != end || time < 0 || time > kLatest)
    return std::nullopt;
  const std::string_view source = std::string_view(text).substr(first + 1, second - first - 1);
  const auto* found = std::find(kSourceNames.begin(), kSourceNames.end(), source);
  const DeviceOrder now{getlaststatus(keyname), level(keyname)};
  if (found == kSourceNames.end() || text.substr(second + 1) != text_of(now)) return std::nullopt;
  return LastChange{SystemTime(std::chrono::milliseconds(time)),
                    static_cast<Source>(found - kSourceNames.begin())};
}

bool DeviceState::is_recorded(const std::string& keyname) const {
  return !module1_
              .regread(RegistryRoot::kLocalMachine, kMachineKey,
                       value_name(without_blanks(keyname)), "")
              .empty();
}

void DeviceState::forget(const std::string& keyname) {
  const std::string key = without_blanks(keyname);
  module1_.regdelete(RegistryRoot::kLocalMachine, kMachineKey, value_name(key));
  module1_.regdelete(RegistryRoot::kLocalMachine, kMachineKey, "dim" + key);
  module1_.regdelete(RegistryRoot::kLocalMachine, kNotSentKey, key);
  module1_.regdelete(RegistryRoot::kLocalMachine, kChangedKey, key);
}

DeviceState::Record DeviceState::record_of(const std::string& keyname) const {
  const std::string key = without_blanks(keyname);
  const auto text = [this](const std::string& folder, const std::string& name) {
    return module1_.regread(RegistryRoot::kLocalMachine, folder, name, "");
  };
  return {text(kMachineKey, value_name(key)), text(kMachineKey, "dim" + key),
          text(kNotSentKey, key), text(kChangedKey, key)};
}

void DeviceState::put_back(const std::string& keyname, const Record& record) {
  const std::string key = without_blanks(keyname);
  const auto write = [this](const std::string& folder, const std::string& name,
                            const std::string& text) {
    if (!text.empty()) module1_.regwrite(RegistryRoot::kLocalMachine, folder, name, text);
  };
  write(kMachineKey, value_name(key), record.state);
  write(kMachineKey, "dim" + key, record.level);
  write(kNotSentKey, key, record.not_sent);
  write(kChangedKey, key, record.changed);
}

void DeviceState::copy(const std::string& from, const std::string& to) {
  const auto copy_value = [this](const std::string& folder, const std::string& old_name,
                                 const std::string& new_name) {
    const std::string text = module1_.regread(RegistryRoot::kLocalMachine, folder, old_name, "");
    if (!text.empty())
      module1_.regwrite(RegistryRoot::kLocalMachine, folder, new_name, text);
    else if (!module1_.regread(RegistryRoot::kLocalMachine, folder, new_name, "").empty())
      module1_.regdelete(RegistryRoot::kLocalMachine, folder, new_name);
  };
  copy_value(kMachineKey, value_name(from), value_name(to));
  copy_value(kMachineKey, "dim" + from, "dim" + to);
  copy_value(kNotSentKey, from, to);
  copy_value(kChangedKey, from, to);
}

void DeviceState::follow(const std::string& from, const std::string& to) {
  for (auto& [old_key, key] : renamed_)
    if (equals_ignoring_case(key, from)) key = to;
  renamed_[to_lower(from)] = to;
}

void DeviceState::stop_following(const std::function<bool(const std::string&)>& is_a_device) {
  std::erase_if(renamed_, [&is_a_device](const auto& entry) { return is_a_device(entry.first); });
}

}  // namespace homewarden
