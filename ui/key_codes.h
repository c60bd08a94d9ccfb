#pragma once

namespace homewarden {

// What controls report of keys and mouse buttons.
inline constexpr int kControlD = 4;
inline constexpr int kBackSpace = 8;
inline constexpr int kDelete = 127;
inline constexpr int kLeftButton = 1;
inline constexpr int kRightButton = 2;

}  // namespace homewarden
