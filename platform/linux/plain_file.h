#pragma once

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

#include "platform/linux/descriptor.h"

namespace homewarden::os_linux {

// Opens a regular file. Not open, and errno says why, where anything else has the name: opening a
// pipe would wait for its other end.
inline Descriptor open_plain(const std::filesystem::path& file, int flags, mode_t mode = 0) {
  Descriptor descriptor(::open(file.c_str(), flags | O_NONBLOCK | O_CLOEXEC, mode));
  struct stat found {};
  if (!descriptor.is_open() || ::fstat(descriptor.get(), &found) != 0) return Descriptor();
  if (S_ISREG(found.st_mode)) return descriptor;
  errno = EINVAL;
  return Descriptor();
}

}  // namespace homewarden::os_linux
