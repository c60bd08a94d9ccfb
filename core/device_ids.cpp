#include "core/device_ids.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/text.h"

namespace homewarden {
namespace {

constexpr const char* kSection = "id";
constexpr std::size_t kLongestId = 4096;

bool is_letter_or_digit(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// Each byte that is no letter or digit becomes "_20", so two keys never have the same id, and none
// ends in "-2".
std::string made_of(std::string_view key) {
  static constexpr std::string_view kDigits = "0123456789abcdef";
  std::string id;
  for (const char c : key) {
    const auto byte = static_cast<unsigned char>(c);
    if (is_letter_or_digit(c))
      id += c;
    else
      id += {'_', kDigits[byte >> 4U], kDigits[byte & 15U]};
  }
  return id.empty() ? "_" : id;
}

// A hand may have written anything.
bool is_id(std::string_view text) {
  return !text.empty() && text.size() <= kLongestId &&
         std::all_of(text.begin(), text.end(),
                     [](char c) { return is_letter_or_digit(c) || c == '_' || c == '-'; });
}

}  // namespace

DeviceIds::DeviceIds(Settings& settings, HouseIndex& house) : settings_(settings), house_(house) {
  house.changed.connect([this] { number(); });
}

const std::string& DeviceIds::of(std::string_view key) const {
  static const std::string kNone;
  look();
  const auto found = ids_.find(to_lower(without_blanks(key)));
  return found == ids_.end() ? kNone : found->second;
}

const Device* DeviceIds::by_id(std::string_view id) const {
  look();
  const auto found = keys_.find(std::string(id));
  return found == keys_.end() ? nullptr : house_.by_key(found->second);
}

std::string DeviceIds::recorded(const Settings& settings, const std::string& key) {
  std::string id = settings.read(kSection, key, "");
  return is_id(id) ? id : made_of(key);
}

void DeviceIds::record(Settings& settings, const std::string& key, const std::string& id) {
  if (recorded(settings, key) == id) return;
  if (id == made_of(key))
    forget(settings, key);
  else
    settings.write(kSection, key, id);
}

void DeviceIds::forget(Settings& settings, const std::string& key) {
  if (!settings.read(kSection, key, "").empty()) settings.remove(kSection, key);
}

void DeviceIds::look() const {
  if (are_known_ || !settings_.are_known()) return;
  ids_.clear();
  number();
}

// Who was in the house before keeps its id, then comes who has one recorded, such as a device with
// a new name or one that was deleted and is back; who is new takes what is left.
void DeviceIds::number() const {
  are_known_ = settings_.are_known();
  const Ids before = std::exchange(ids_, {});
  keys_.clear();
  std::vector<std::string> newcomers;
  const auto give = [this](const std::string& key, std::string id) {
    if (!keys_.try_emplace(id, key).second) return false;
    ids_.emplace(to_lower(key), std::move(id));
    return true;
  };
  for (const Device& device : house_.devices()) {
    std::string key = device.key();
    if (ids_.contains(to_lower(key))) continue;
    const auto found = before.find(to_lower(key));
    if (found == before.end() || !give(key, found->second)) newcomers.push_back(std::move(key));
  }
  for (const std::string& key : newcomers) {
    std::string id = recorded(settings_, key);
    if (!ids_.contains(to_lower(key)) && id != made_of(key)) give(key, std::move(id));
  }
  for (const std::string& key : newcomers) {
    if (ids_.contains(to_lower(key))) continue;
    const std::string id = made_of(key);
    bool given = give(key, id);
    for (int number = 2; !given; ++number) given = give(key, id + "-" + std::to_string(number));
  }
  if (!are_known_) return;
  for (const std::string& key : newcomers) record(settings_, key, ids_.at(to_lower(key)));
}

}  // namespace homewarden
