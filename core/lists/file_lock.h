#pragma once

#include <utility>

#include "base/task.h"
#include "core/module1.h"
#include "ui/shared_state.h"

namespace homewarden {

// Holds `filebusy`: one operation at a time works on the data files. Released on every way out.
class FileLock {
 public:
  explicit FileLock(Flags& form) : form_(&form) { form.filebusy = true; }
  FileLock(FileLock&& other) noexcept : form_(std::exchange(other.form_, nullptr)) {}
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  FileLock& operator=(FileLock&&) = delete;
  ~FileLock() { release(); }

  // Before its end; a second call does nothing.
  void release() {
    if (form_) form_->filebusy = false;
    form_ = nullptr;
  }

 private:
  Flags* form_;
};

// Waits in pauses of 2 seconds until nobody works on the data files.
inline Task<FileLock> lock_files(Flags& form, Module1& module1) {
  while (form.filebusy) co_await module1.pause(2);
  co_return FileLock(form);
}

}  // namespace homewarden
