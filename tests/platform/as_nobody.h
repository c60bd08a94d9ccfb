#pragma once

#include <unistd.h>

namespace homewarden::testing {

// While one lives, a test that runs as root is a user like any other, to whom files can be
// forbidden. To be made before the folders that the user works in.
class AsNobody {
 public:
  AsNobody() {
    if (was_ == 0) [[maybe_unused]]
      const int done = seteuid(kNobody);
  }
  AsNobody(const AsNobody&) = delete;
  AsNobody& operator=(const AsNobody&) = delete;
  ~AsNobody() {
    if (was_ == 0) [[maybe_unused]]
      const int done = seteuid(0);
  }

 private:
  static constexpr uid_t kNobody = 65534;
  const uid_t was_ = geteuid();
};

}  // namespace homewarden::testing
