#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <tuple>

#include "platform/registry.h"

namespace homewarden::testing {

class MemoryRegistry : public Registry {
 public:
  std::optional<RegistryValue> read(RegistryRoot root, const std::string& key,
                                    const std::string& name) override {
    const auto found = values_.find({root, found_as(key), found_as(name)});
    if (found == values_.end()) return std::nullopt;
    return found->second;
  }

  bool write(RegistryRoot root, const std::string& key, const std::string& name,
             const RegistryValue& value) override {
    if (may_change && !may_change()) return false;
    values_[{root, found_as(key), found_as(name)}] = value;
    ++changes_;
    return true;
  }

  bool remove(RegistryRoot root, const std::string& key, const std::string& name) override {
    if (may_change && !may_change()) return false;
    values_.erase({root, found_as(key), found_as(name)});
    ++changes_;
    return true;
  }

  std::uint64_t changes(RegistryRoot) override { return changes_; }

  // Asked before each change when it is set: false from when the power is gone.
  std::function<bool()> may_change;

 private:
  // Only ASCII letters lose their case, as in a real registry of this program.
  static std::string found_as(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char letter) {
      return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 0x20) : letter;
    });
    return text;
  }

  std::map<std::tuple<RegistryRoot, std::string, std::string>, RegistryValue> values_;
  std::uint64_t changes_ = 0;
};

}  // namespace homewarden::testing
