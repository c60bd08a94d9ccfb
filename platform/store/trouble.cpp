#include "platform/store/trouble.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "platform/store/table.h"

namespace homewarden::store {
namespace {

StoreTrouble trouble_of_system(int error) {
  switch (error) {
    case ENOSPC:
    case EDQUOT:
      return StoreTrouble::kNoSpace;
    case EROFS:
      return StoreTrouble::kReadOnly;
    case EACCES:
    case EPERM:
      return StoreTrouble::kForbidden;
    default:
      return StoreTrouble::kFailing;
  }
}

// What keeps a file, or the nearest folder above it, from being changed.
StoreTrouble trouble_around(std::filesystem::path place) {
  std::error_code error;
  for (; !std::filesystem::exists(place, error); place = place.parent_path())
    if (place == place.parent_path()) return StoreTrouble::kFailing;
  if (faccessat(AT_FDCWD, place.c_str(), W_OK, AT_EACCESS) != 0) return trouble_of_system(errno);
  const auto space = std::filesystem::space(place, error);
  return !error && space.available == 0 ? StoreTrouble::kNoSpace : StoreTrouble::kFailing;
}

}  // namespace

StoreTrouble trouble_of(int result, int system_error, const std::filesystem::path& file) {
  if (is_busy(result)) return StoreTrouble::kLocked;
  if (is_damage(result)) return StoreTrouble::kDamaged;
  if ((result & 0xff) == SQLITE_FULL) return StoreTrouble::kNoSpace;
  for (const StoreTrouble trouble :
       {trouble_of_system(system_error), trouble_around(file), trouble_around(file.parent_path())})
    if (trouble != StoreTrouble::kFailing) return trouble;
  return StoreTrouble::kFailing;
}

}  // namespace homewarden::store
