#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>

namespace homewarden {

// Takes the content of a file apart into lines ended by CR LF, LF or CR. What follows the last end
// is a line when it is not empty. The lines point into the content.
class LineReader {
 public:
  // The content must outlive the reader and its lines.
  explicit LineReader(std::string_view content) : rest_(content) {}

  // The next line without its end; nothing after the last.
  std::optional<std::string_view> next() {
    if (rest_.empty()) return std::nullopt;
    // Several times as fast as find_first_of.
    const auto is_end = [](char c) { return c == '\r' || c == '\n'; };
    const auto found = std::find_if(rest_.begin(), rest_.end(), is_end);
    const auto end = static_cast<std::size_t>(found - rest_.begin());
    const std::string_view line = rest_.substr(0, end);
    if (found == rest_.end()) {
      rest_ = {};
      return line;
    }
    const bool two_bytes = rest_.substr(end, 2) == "\r\n";
    rest_.remove_prefix(end + (two_bytes ? 2 : 1));
    return line;
  }

 private:
  std::string_view rest_;
};

}  // namespace homewarden
