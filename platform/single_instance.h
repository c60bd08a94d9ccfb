#pragma once

namespace homewarden {

// Tells copies of the program apart that would work on the same house.
class SingleInstance {
 public:
  virtual ~SingleInstance() = default;

  // True when another copy is running. Otherwise this copy counts as the running one from now on.
  virtual bool another_is_running() = 0;
};

}  // namespace homewarden
