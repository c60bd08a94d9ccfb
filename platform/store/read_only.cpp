#include "platform/store/read_only.h"

#include <sqlite3.h>
#include <stdlib.h>

#include <string>
#include <system_error>

#include "platform/store/table.h"

namespace homewarden::store {
namespace {

namespace fs = std::filesystem;

fs::path log_of(fs::path file) {
  return file += "-wal";
}

int read_all(const std::string& address, int flags, Values& values) {
  values.clear();
  sqlite3* opened = nullptr;
  int result = sqlite3_open_v2(address.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  const Handle database(opened);
  if (result == SQLITE_OK) result = check_pages(opened);
  if (result == SQLITE_OK) result = load(opened, values);
  return result;
}

// As it is, without a lock and without looking for a log.
int read_unlocked(const fs::path& file, Values& values) {
  std::string address = "file:";
  for (const char letter : file.string()) {
    if (letter == '%' || letter == '?' || letter == '#') {
      constexpr const char* kDigits = "0123456789ABCDEF";
      address += {'%', kDigits[(letter >> 4) & 15], kDigits[letter & 15]};
    } else {
      address += letter;
    }
  }
  return read_all(address + "?immutable=1", SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, values);
}

// A folder for a moment, in the first place that takes one.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::error_code error;
    for (const fs::path& place : {fs::path("/dev/shm"), fs::temp_directory_path(error)}) {
      std::string name = (place / "homewarden-XXXXXX").string();
      if (!mkdtemp(name.data())) continue;
      path_ = name;
      return;
    }
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() {
    std::error_code ignored;
    if (!path_.empty()) fs::remove_all(path_, ignored);
  }

  // Empty when there is no such place.
  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

// Together with its log, where a log can be worked into a file.
int read_copy(const fs::path& file, Values& values) {
  const ScratchFolder folder;
  if (folder.path().empty()) return SQLITE_CANTOPEN;
  const fs::path copy = folder.path() / "copy.db";
  std::error_code error;
  fs::copy_file(file, copy, error);
  if (!error) fs::copy_file(log_of(file), log_of(copy), error);
  if (error) return SQLITE_CANTOPEN;
  fs::permissions(copy, fs::perms::owner_read | fs::perms::owner_write, error);
  fs::permissions(log_of(copy), fs::perms::owner_read | fs::perms::owner_write, error);
  return read_all(copy.string(), SQLITE_OPEN_READWRITE, values);
}

}  // namespace

int read_without_writing(const fs::path& file, Values& values) {
  values.clear();
  std::error_code error;
  if (fs::status(file, error).type() == fs::file_type::not_found) return SQLITE_OK;
  // With the locks of whoever may be writing it.
  const int result = read_all(file.string(), SQLITE_OPEN_READONLY, values);
  if (result == SQLITE_OK || is_busy(result) || is_damage(result)) return result;
  // Those need a file beside it, which cannot be made: then nobody has it open for writing.
  const auto size = fs::file_size(log_of(file), error);
  return error || size == 0 ? read_unlocked(file, values) : read_copy(file, values);
}

std::string stamp_of(const fs::path& file) {
  std::string stamp;
  for (const fs::path& path : {file, log_of(file)}) {
    std::error_code error;
    const auto size = fs::file_size(path, error);
    const auto time = fs::last_write_time(path, error);
    stamp += std::to_string(error ? 0 : size) + " " +
             std::to_string(error ? 0 : time.time_since_epoch().count()) + " ";
  }
  return stamp;
}

}  // namespace homewarden::store
