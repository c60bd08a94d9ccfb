#include "platform/linux/lock_file_instance.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace homewarden::os_linux {

LockFileInstance::LockFileInstance(const std::filesystem::path& folder)
    : file_(folder / "running.lock") {}

bool LockFileInstance::another_is_running() {
  if (lock_.is_open()) return false;
  std::error_code ignored;
  std::filesystem::create_directories(file_.parent_path(), ignored);
  Descriptor descriptor(::open(file_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666));
  // A file that another person made may often be read only, which is enough for the lock.
  if (!descriptor.is_open()) descriptor = Descriptor(::open(file_.c_str(), O_RDONLY | O_CLOEXEC));
  if (!descriptor.is_open()) return false;
  if (::flock(descriptor.get(), LOCK_EX | LOCK_NB) != 0) return errno == EWOULDBLOCK;
  lock_ = std::move(descriptor);
  return false;
}

}  // namespace homewarden::os_linux
