#pragma once

#include <functional>

namespace homewarden {

// Has something done when the process ends without having closed its window. That is how it goes
// when the person logs off: the connection to the display breaks, and the toolkit ends the process
// by exit() on X11 and the event loop with an error on Wayland. There may be one at a time, made
// after the application object.
class ServiceAtExit {
 public:
  // The function is called at most once, at the end of the process or of this object, without an
  // event loop; what it refers to outlives this object.
  explicit ServiceAtExit(std::function<void()> start_service);
  ServiceAtExit(const ServiceAtExit&) = delete;
  ServiceAtExit& operator=(const ServiceAtExit&) = delete;
  ~ServiceAtExit();

  // The window has been closed in order; nothing is left to be done.
  void disarm() { start_service_ = nullptr; }

 private:
  void act();

  std::function<void()> start_service_;
};

}  // namespace homewarden
