#include "base/json.h"

#include <algorithm>

namespace homewarden {

const Json* Json::find(std::string_view name) const {
  const Object* members = object();
  if (members == nullptr) return nullptr;
  const auto found = std::find_if(members->begin(), members->end(),
                                  [name](const Member& member) { return member.first == name; });
  return found == members->end() ? nullptr : &found->second;
}

}  // namespace homewarden
