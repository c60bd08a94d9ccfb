#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/registry.h"

namespace homewarden::store {

// What a value is found under.
struct Name {
  std::string key;
  std::string name;
};
struct NameView {
  NameView(std::string_view of_key, std::string_view of_name) : key(of_key), name(of_name) {}
  NameView(const Name& other) : key(other.key), name(other.name) {}

  std::string_view key;
  std::string_view name;
};

// Finds names without regard to the case of ASCII letters, as the files do. The name is looked at
// first: most values share a few keys.
struct IgnoringCase {
  using is_transparent = void;

  bool operator()(const NameView& a, const NameView& b) const {
    const int order = compare(a.name, b.name);
    return order != 0 ? order < 0 : compare(a.key, b.key) < 0;
  }

 private:
  static unsigned char folded(char letter) {
    return static_cast<unsigned char>(letter >= 'A' && letter <= 'Z' ? letter + 0x20 : letter);
  }
  static int compare(std::string_view a, std::string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i)
      if (folded(a[i]) != folded(b[i])) return folded(a[i]) < folded(b[i]) ? -1 : 1;
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
  }
};

using Values = std::map<Name, RegistryValue, IgnoringCase>;

// A change that is not on the disk yet; no value stands for one that is removed. Of several changes
// of one value the last is kept: all that wait are written in one transaction.
struct Change {
  std::uint64_t number = 0;
  std::optional<RegistryValue> value;
};
using Changes = std::map<Name, Change, IgnoringCase>;

inline void carry_over(const Changes& changes, Values& values) {
  for (const auto& [name, change] : changes) {
    if (change.value)
      values.insert_or_assign(name, *change.value);
    else
      values.erase(name);
  }
}

}  // namespace homewarden::store
