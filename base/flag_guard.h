#pragma once

namespace homewarden {

// A flag is set while one of these lives, and cleared on every way out.
class FlagGuard {
 public:
  explicit FlagGuard(bool& flag) : flag_(flag) { flag_ = true; }
  FlagGuard(const FlagGuard&) = delete;
  FlagGuard& operator=(const FlagGuard&) = delete;
  ~FlagGuard() { flag_ = false; }

 private:
  bool& flag_;
};

}  // namespace homewarden
