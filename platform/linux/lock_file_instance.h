#pragma once

#include <filesystem>

#include "platform/linux/descriptor.h"
#include "platform/single_instance.h"

namespace homewarden::os_linux {

// Copies are told apart by a lock on a file; the lock goes with the process, however it ends.
class LockFileInstance : public SingleInstance {
 public:
  // Copies with the same folder see each other. Nothing is locked before the first question.
  explicit LockFileInstance(const std::filesystem::path& folder);

  // Where the file cannot be made nobody can be found: false.
  bool another_is_running() override;

 private:
  std::filesystem::path file_;
  Descriptor lock_;
};

}  // namespace homewarden::os_linux
