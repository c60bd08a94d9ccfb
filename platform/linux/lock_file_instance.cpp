#include "platform/linux/lock_file_instance.h"

#include <fcntl.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/linux/plain_file.h"

namespace homewarden::os_linux {
namespace {

// Of the open file, not of the process, and the only kind that can be asked for without taking it.
struct flock whole_file(short type) {
  struct flock lock = {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  return lock;
}

bool is_locked(int descriptor) {
  struct flock lock = whole_file(F_WRLCK);
  return ::fcntl(descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

}  // namespace

LockFileInstance::LockFileInstance(std::filesystem::path file) : file_(std::move(file)) {}

bool LockFileInstance::take() {
  if (lock_.is_open()) return true;
  std::error_code ignored;
  std::filesystem::create_directories(file_.parent_path(), ignored);
  Descriptor descriptor = open_plain(file_, O_RDWR | O_CREAT, 0666);
  short type = F_WRLCK;
  if (!descriptor.is_open()) {
    // A file that another person made may often be read only, which is enough for a shared lock.
    descriptor = open_plain(file_, O_RDONLY);
    type = F_RDLCK;
    if (!descriptor.is_open()) return true;
    if (is_locked(descriptor.get())) return false;
  }
  struct flock lock = whole_file(type);
  if (::fcntl(descriptor.get(), F_OFD_SETLK, &lock) != 0) return errno != EAGAIN && errno != EACCES;
  lock_ = std::move(descriptor);
  return true;
}

void LockFileInstance::give_back() {
  lock_ = Descriptor();
}

bool LockFileInstance::another_is_running() {
  if (lock_.is_open()) return false;
  const Descriptor descriptor = open_plain(file_, O_RDONLY);
  return descriptor.is_open() && is_locked(descriptor.get());
}

}  // namespace homewarden::os_linux
