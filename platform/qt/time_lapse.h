#pragma once

#include <chrono>
#include <optional>
#include <string_view>

namespace homewarden::qt {

// Time that runs faster than it does, for tests and measurements: since `origin`, by the wall
// clock, `factor` times as much has passed. Programs with the same one show the same time.
struct TimeLapse {
  int factor = 1;
  std::chrono::milliseconds origin{0};  // since 1970, UTC

  // What the wall clock shows when it is `real`.
  std::chrono::milliseconds at(std::chrono::milliseconds real) const {
    return origin + (real - origin) * factor;
  }
};

// Reads "60@1700000000", the factor, 1 to 1000, and the origin in whole seconds since 1970, UTC.
// Nothing for anything else.
std::optional<TimeLapse> parse_time_lapse(std::string_view text);

}  // namespace homewarden::qt
