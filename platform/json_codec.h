#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/json.h"

namespace homewarden {

// JSON as text, and back.
class JsonCodec {
 public:
  virtual ~JsonCodec() = default;

  // Nothing for what is no JSON, is nested deeper than kDeepest, or is followed by anything but
  // blanks. A whole number that does not fit into 64 bits becomes a real one; of several members of
  // one name the last counts.
  static constexpr int kDeepest = 32;
  virtual std::optional<Json> read(std::string_view text) const = 0;

  // On one line. Bytes in texts that are no UTF-8 become U+FFFD.
  virtual std::string write(const Json& value) const = 0;
};

}  // namespace homewarden
