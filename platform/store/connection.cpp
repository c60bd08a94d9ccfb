#include "platform/store/connection.h"

#include <sqlite3.h>
#include <sys/stat.h>

#include <cstdlib>

namespace homewarden::store {

int Connection::open(const std::filesystem::path& file) {
  file_ = file;
  sqlite3* opened = nullptr;
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
  int result = sqlite3_open_v2(file.c_str(), &opened, flags, nullptr);
  database_.reset(opened);
  if (result == SQLITE_OK) result = set_up(opened, is_new_);
  // What may only be read is opened all the same.
  if (result == SQLITE_OK && sqlite3_db_readonly(opened, "main") == 1) result = SQLITE_READONLY;
  if (result == SQLITE_OK) result = check_pages(opened);
  if (result == SQLITE_OK) return result;
  note_system_error();
  close();
  return result;
}

int Connection::load_all(Values& values) {
  values.clear();
  seen_version_ = data_version();  // first: what is written meanwhile is found at the next look
  return load(database_.get(), values);
}

bool Connection::has_changed() {
  return data_version() != seen_version_;
}

bool Connection::has_moved() {
  int moved = 0;
  sqlite3_file_control(database_.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  return moved != 0;
}

Connection::Files Connection::files_now() const {
  Files files;
  struct stat info {};
  if (::stat(file_.c_str(), &info) == 0)
    files.file = std::to_string(info.st_size) + ' ' + std::to_string(info.st_mtim.tv_sec) + ' ' +
                 std::to_string(info.st_mtim.tv_nsec);
  if (::stat((file_.string() + "-wal").c_str(), &info) == 0 && S_ISREG(info.st_mode)) {
    files.log_inode = info.st_ino;
    files.log_size = info.st_size;
  }
  return files;
}

void Connection::note_files() {
  files_ = files_now();
}

bool Connection::has_lost_log() const {
  const Files now = files_now();
  return files_.log_inode != 0 &&
         (now.log_inode != files_.log_inode || now.log_size < files_.log_size);
}

void Connection::note_system_error() {
  system_error_ = sqlite3_system_errno(database_.get());
}

// A number that changes when another connection has changed the file; 0 while it cannot be read.
int Connection::data_version() {
  int version = 0;
  sqlite3_exec(
      database_.get(), "PRAGMA data_version",
      [](void* into, int, char** texts, char**) {
        *static_cast<int*>(into) = std::atoi(texts[0]);
        return 0;
      },
      &version, nullptr);
  return version;
}

}  // namespace homewarden::store
