#pragma once

#include <filesystem>

#include "platform/store/table.h"

namespace homewarden::store {

// A file open for reading and writing. Nothing here waits for another process: what is locked is
// answered as busy. The result codes are those of the library.
class Connection {
 public:
  // Opens the file, begins it when it is missing, and looks at all its pages. Anything but "ok"
  // leaves it closed.
  int open(const std::filesystem::path& file);
  bool is_open() const { return database_ != nullptr; }
  void close() { database_.reset(); }
  // Whether the table was not there before.
  bool is_new() const { return is_new_; }

  // Replaces `values` by what the file holds; has_changed() is false afterwards.
  int load_all(Values& values);
  int write(const Changes& changes) { return store_changes(database_.get(), changes); }

  // Whether another connection has written since load_all().
  bool has_changed();
  // Whether the file is no more what lies under its name: set aside, deleted or replaced.
  bool has_moved();

  // What the system said of the last failure, also of an open() that failed.
  int system_error() const { return system_error_; }
  void note_system_error();

 private:
  int data_version();

  Handle database_;
  bool is_new_ = false;
  int seen_version_ = 0;
  int system_error_ = 0;
};

}  // namespace homewarden::store
