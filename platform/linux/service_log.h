#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace homewarden::os_linux {

// What a service prints where there is no journal: a file of lines with their time, which is
// renamed to `<name>.1` when it is full, in place of the one before. A disk that takes nothing
// loses lines and holds nothing up.
class ServiceLog {
 public:
  static constexpr std::size_t kRoom = 512 * 1024;  // bytes of one of the two files
  static constexpr std::size_t kLongestLine = 4096;

  explicit ServiceLog(std::filesystem::path file);

  // In any pieces; a line is written when its end has come, or when it is very long.
  void append(std::string_view text);
  // Writes what has come of a line whose end does not come any more.
  void end_line();

 private:
  void write_line();

  std::filesystem::path file_;
  std::string line_;
};

}  // namespace homewarden::os_linux
