#pragma once

#include <filesystem>

#include "platform/store/table.h"

namespace homewarden::store {

// Processes open a file one after the other. Without that two could change a new file to a
// write-ahead log at once, for which the library does not wait; and one could begin a new file, or
// a new log, while another sets a damaged one aside, and have it taken away.
class Turn {
 public:
  explicit Turn(std::filesystem::path file);
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

  bool is_held() const { return is_held_; }
  // Whether it is another one's. Neither held nor taken: there is no place for a lock here, and
  // nothing can be begun or set aside.
  bool is_taken() const { return is_taken_; }

 private:
  Handle lock_;
  bool is_held_ = false;
  bool is_taken_ = false;
};

// Renames a damaged file, and the logs beside it, to `<name>.broken-<n>`. Answers the new name; ""
// when it cannot be renamed: it then lies where it was.
std::filesystem::path set_aside(const std::filesystem::path& file);

}  // namespace homewarden::store
