#include "platform/linux/writer_watch.h"

#include <fcntl.h>
#include <signal.h>

#include <cerrno>

namespace homewarden::os_linux {

WriterWatch::WriterWatch(int descriptor) : descriptor_(descriptor) {
  // Of who opens the file a signal tells, which is to be one that does nothing.
  if (::fcntl(descriptor, F_SETSIG, SIGURG) != 0) return;
  leased_ = ::fcntl(descriptor, F_SETLEASE, F_RDLCK) == 0;
  found_writer_ = !leased_ && errno == EAGAIN;
}

WriterWatch::~WriterWatch() {
  if (leased_) ::fcntl(descriptor_, F_SETLEASE, F_UNLCK);
}

bool WriterWatch::somebody_writes() const {
  return found_writer_ || (leased_ && ::fcntl(descriptor_, F_GETLEASE) != F_RDLCK);
}

}  // namespace homewarden::os_linux
