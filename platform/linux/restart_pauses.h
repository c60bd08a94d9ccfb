#pragma once

#include <algorithm>
#include <chrono>

namespace homewarden::os_linux {

// How long to wait before a process that has failed is started again: a second, and twice as long
// each time while it keeps failing soon, up to a minute.
class RestartPauses {
 public:
  static constexpr std::chrono::seconds kShortest{1};
  static constexpr std::chrono::seconds kLongest{60};
  static constexpr std::chrono::seconds kRanWell{60};  // from here on it did not fail soon

  // For one that ran so long before it failed.
  std::chrono::seconds next(std::chrono::milliseconds ran) {
    if (ran >= kRanWell) next_ = kShortest;
    const std::chrono::seconds pause = next_;
    next_ = std::min(2 * next_, kLongest);
    return pause;
  }

 private:
  std::chrono::seconds next_ = kShortest;
};

}  // namespace homewarden::os_linux
