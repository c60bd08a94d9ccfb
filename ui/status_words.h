#pragma once

#include <algorithm>
#include <string_view>

namespace homewarden {

// What a person reads of a text of the status line: without the milliseconds until the first run of
// the events, which stand behind the port of an interface that was found.
inline std::string_view status_words(std::string_view text) {
  constexpr std::string_view kFound = "Found and Initialized Interface";
  constexpr std::string_view kTimer = ", timer ";
  const auto timer = text.rfind(kTimer);
  if (!text.starts_with(kFound) || timer == std::string_view::npos) return text;
  const std::string_view number = text.substr(timer + kTimer.size());
  const bool is_number = std::all_of(number.begin(), number.end(),
                                     [](char digit) { return digit >= '0' && digit <= '9'; });
  return is_number ? text.substr(0, timer) : text;
}

}  // namespace homewarden
