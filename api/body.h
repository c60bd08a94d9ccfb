#pragma once

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>

#include "base/json.h"

namespace homewarden {

// What is wrong with the body of a question that must be an object with these members at most, in
// words for a person; "" for nothing. A body that is missing counts as an empty object.
inline std::string wrong_member(const Json& body, std::initializer_list<std::string_view> known) {
  if (body.is_null()) return "";
  if (!body.object()) return "The body must be an object.";
  for (const auto& [name, value] : *body.object())
    if (std::find(known.begin(), known.end(), name) == known.end())
      return "This does not take the member \"" + name + "\".";
  return "";
}

}  // namespace homewarden
