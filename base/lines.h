#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
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

// Lines of a file that cannot be understood.
class LeftOutLines {
 public:
  // By the number in the file, from 1.
  void add(std::size_t number) {
    if (count_++ == 0) first_ = number;
  }

  bool empty() const { return count_ == 0; }

  // What a person is told, when there are any.
  std::string text(const std::string& file) const {
    if (count_ == 1)
      return "Line " + std::to_string(first_) + " of " + file +
             " cannot be understood and is left out. The file keeps it.";
    return std::to_string(count_) + " lines of " + file +
           " cannot be understood and are left out, the first of them line " +
           std::to_string(first_) + ". The file keeps them.";
  }

 private:
  std::size_t count_ = 0;
  std::size_t first_ = 0;
};

}  // namespace homewarden
