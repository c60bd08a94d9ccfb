#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace homewarden {

// The event list `evelst.hwd`. Whoever calls a member that reads or changes it holds `filebusy`.
//
// A change writes the whole new list into the scratch file `temp.txt` and puts that in the place of
// the list, so a stop at any moment leaves the old list or the new one.
class EventFile {
 public:
  EventFile(Files& files, const std::filesystem::path& folder);

  bool exists();

  // All lines, without a byte-order mark. Nothing when the file is missing or cannot be read.
  std::optional<std::string> content();

  // Writes into the scratch file the lines that do not contain the key, whatever their letter case,
  // and `added` behind them unless it is "". An empty key leaves out nothing. False, with the list
  // as it was, when the list cannot be read or the scratch file cannot be written.
  bool write_scratch(std::string_view left_out, std::string_view added = {});

  // Puts the scratch file in the place of the list.
  bool use_scratch();

  void remove_scratch();

  // Puts back what a stop in the middle of a change left as the only copy of the list.
  void recover();

 private:
  Files& files_;
  std::filesystem::path file_;
  std::filesystem::path scratch_;
};

}  // namespace homewarden
