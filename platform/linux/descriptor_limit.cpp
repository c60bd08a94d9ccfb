#include "platform/linux/descriptor_limit.h"

#include <pthread.h>
#include <sys/resource.h>

#include <algorithm>

namespace homewarden::os_linux {
namespace {

rlimit given{};

void give_back() {
  ::setrlimit(RLIMIT_NOFILE, &given);
}

}  // namespace

void raise_descriptor_limit(std::size_t most) {
  if (::getrlimit(RLIMIT_NOFILE, &given) != 0) return;
  rlimit raised = given;
  raised.rlim_cur = std::min<rlim_t>(raised.rlim_max, most);
  if (raised.rlim_cur <= given.rlim_cur || ::setrlimit(RLIMIT_NOFILE, &raised) != 0) return;
  ::pthread_atfork(nullptr, nullptr, &give_back);
}

}  // namespace homewarden::os_linux
