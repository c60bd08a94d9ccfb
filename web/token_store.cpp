#include "web/token_store.h"

#include <algorithm>

#include "base/text.h"
#include "core/dates.h"

namespace homewarden {
namespace {

const std::string kSection = "webtokens";
constexpr std::size_t kDateLength = 16;    // "2026-11-24 07:30"
constexpr std::size_t kRightLength = 4;    // "read", "full"
constexpr std::size_t kShortestHash = 32;  // digits

std::string used_key(const std::string& hash) {
  return "used " + hash;
}

bool is_hash(std::string_view text) {
  return text.size() >= kShortestHash &&
         std::all_of(text.begin(), text.end(), [](char c) { return hex_digit(c) >= 0; });
}

bool is_control(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < ' ' || byte == 0x7F;
}

bool is_name(std::string_view name) {
  return !name.empty() && name == trim_blanks(name) && name.size() <= TokenStore::kLongestName &&
         std::none_of(name.begin(), name.end(), is_control);
}

TokenStore::Entry parsed(int place, std::string_view text) {
  TokenStore::Entry entry;
  entry.place = place;
  entry.is_damaged = true;
  constexpr std::size_t kHash = kRightLength + 1 + kDateLength + 1;
  const std::size_t name = text.find(' ', std::min(kHash, text.size()));
  if (name == std::string_view::npos) return entry;
  const std::string_view right = text.substr(0, kRightLength);
  entry.made = text.substr(kRightLength + 1, kDateLength);
  entry.hash = text.substr(kHash, name - kHash);
  entry.name = text.substr(name + 1);
  entry.may_change = right == "full";
  entry.is_damaged = (right != "full" && right != "read") || text[kRightLength] != ' ' ||
                     text[kHash - 1] != ' ' || !parse_minute(entry.made) || !is_hash(entry.hash) ||
                     !is_name(entry.name);
  return entry;
}

// Names that differ in letter case alone are one to a person.
bool are_alike(const TokenStore::Entry& a, const TokenStore::Entry& b) {
  return a.hash == b.hash || equals_ignoring_case(a.name, b.name);
}

}  // namespace

std::vector<TokenStore::Entry> TokenStore::entries() const {
  std::vector<Entry> all;
  for (int place = 1; place <= kMost; ++place) {
    const std::string text = settings_.read(kSection, std::to_string(place), "");
    if (text.empty()) continue;
    Entry entry = parsed(place, text);
    entry.is_damaged |= std::any_of(all.begin(), all.end(), [&entry](const Entry& before) {
      return !before.is_damaged && are_alike(before, entry);
    });
    if (!entry.is_damaged) {
      const std::string used = settings_.read(kSection, used_key(entry.hash), "");
      if (parse_minute(used + " 00:00")) entry.used = used;
    }
    all.push_back(std::move(entry));
  }
  return all;
}

std::string TokenStore::name_trouble(std::string_view name) const {
  if (name.empty()) return "Please give the token a name, such as the program that will use it.";
  if (std::any_of(name.begin(), name.end(), is_control))
    return "Sorry, the name of a token can only have the letters of Western European languages.";
  if (!is_name(name))
    return "Sorry, the name of a token can have " + std::to_string(kLongestName) +
           " letters at most.";
  const auto all = entries();
  if (std::any_of(all.begin(), all.end(), [name](const Entry& entry) {
        return !entry.is_damaged && equals_ignoring_case(entry.name, name);
      }))
    return "There is a token with the name \"" + std::string(name) +
           "\" already. Revoke it first, or choose another name.";
  if (all.size() >= static_cast<std::size_t>(kMost))
    return "There are " + std::to_string(kMost) +
           " tokens already, and there can be no more. Revoke one that is not used any more.";
  return "";
}

int TokenStore::add(const std::string& name, const std::string& hash, bool may_change,
                    Minute made) {
  if (!name_trouble(name).empty()) return 0;
  int place = 1;
  while (!settings_.read(kSection, std::to_string(place), "").empty()) ++place;
  settings_.write(
      kSection, std::to_string(place),
      std::string(may_change ? "full " : "read ") + text_of(made) + " " + hash + " " + name);
  return place;
}

void TokenStore::remove(int place) {
  const Entry entry = parsed(place, settings_.read(kSection, std::to_string(place), ""));
  settings_.remove(kSection, std::to_string(place));
  if (!entry.is_damaged) settings_.remove(kSection, used_key(entry.hash));
}

void TokenStore::note_use(const Entry& entry, std::chrono::local_days day) {
  const std::string text = text_of(day);
  if (entry.used != text) settings_.write(kSection, used_key(entry.hash), text);
}

}  // namespace homewarden
