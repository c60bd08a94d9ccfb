#pragma once

#include <map>
#include <optional>
#include <string>
#include <tuple>

#include "base/text.h"
#include "platform/registry.h"

namespace homewarden::testing {

class MemoryRegistry : public Registry {
 public:
  std::optional<RegistryValue> read(RegistryRoot root, const std::string& key,
                                    const std::string& name) override {
    const auto found = values_.find({root, to_lower(key), to_lower(name)});
    if (found == values_.end()) return std::nullopt;
    return found->second;
  }

  bool write(RegistryRoot root, const std::string& key, const std::string& name,
             const RegistryValue& value) override {
    values_[{root, to_lower(key), to_lower(name)}] = value;
    return true;
  }

 private:
  std::map<std::tuple<RegistryRoot, std::string, std::string>, RegistryValue> values_;
};

}  // namespace homewarden::testing
