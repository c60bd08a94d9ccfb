#pragma once

#include <filesystem>

#include "platform/linux/descriptor.h"
#include "platform/single_instance.h"

namespace homewarden::os_linux {

// The locks of the programs in the machine-wide folder.
inline const char* const kWindowLock = "running.lock";
inline const char* const kServiceLock = "wardengine.lock";

// Copies are told apart by a lock on a file; the lock goes with the process, however it ends.
class LockFileInstance : public SingleInstance {
 public:
  // Copies with the same file see each other. Nothing is made before take().
  explicit LockFileInstance(std::filesystem::path file);

  // Where the file cannot be made, or its disk has no locks, nobody can be found: true.
  bool take() override;
  void give_back() override;
  bool another_is_running() override;

 private:
  std::filesystem::path file_;
  Descriptor lock_;
};

}  // namespace homewarden::os_linux
