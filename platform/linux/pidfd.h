#pragma once

#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

#include "platform/linux/descriptor.h"

namespace homewarden::os_linux {

// A process by a descriptor, which never comes to mean another one, and is readable when it has
// ended. By number: the C library of Debian 12 declares these calls for C alone.

// Not open where there is no such process, and errno says so.
inline Descriptor open_process(pid_t process) {
  return Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
}

inline void send_signal(const Descriptor& process, int signal) {
  ::syscall(SYS_pidfd_send_signal, process.get(), signal, nullptr, 0);
}

}  // namespace homewarden::os_linux
