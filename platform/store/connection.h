#pragma once

#include <filesystem>
#include <string>

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
  // How file and log lie on the disk; to be called after each opening and writing.
  void note_files();
  // Whether somebody else has written into the file since then, past the library or by it.
  bool was_touched() const { return files_now().file != files_.file; }
  // Whether its log went, or became shorter: what was written may stand nowhere any more.
  bool has_lost_log() const;

  // What the system said of the last failure, also of an open() that failed.
  int system_error() const { return system_error_; }
  void note_system_error();

 private:
  struct Files {
    std::string file;             // its length and the time of the last change
    unsigned long log_inode = 0;  // 0: there is none
    long log_size = 0;
  };
  Files files_now() const;
  int data_version();

  Handle database_;
  std::filesystem::path file_;
  Files files_;
  bool is_new_ = false;
  int seen_version_ = 0;
  int system_error_ = 0;
};

}  // namespace homewarden::store
