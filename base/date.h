#pragma once

#include <chrono>

namespace homewarden {

// A date and time of day as a wall clock at the house shows it. The default is the origin,
// 1 January 1970 at midnight.
using Date = std::chrono::local_seconds;

// Whole minutes of the wall clock. Minutes that a clock skips are numbered too; when it is set back
// it shows the same ones again.
using Minute = std::chrono::local_time<std::chrono::minutes>;

}  // namespace homewarden
