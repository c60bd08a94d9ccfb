#pragma once

namespace homewarden {

// Tells copies of a program apart that would work on the same house. The window and the background
// service each have their own.
class SingleInstance {
 public:
  virtual ~SingleInstance() = default;

  // Makes this copy the running one, until give_back() or the end of its process. False, with
  // nothing changed, when another one is; true again when it is this one already.
  virtual bool take() = 0;

  // Nothing happens when this copy is not the running one.
  virtual void give_back() = 0;

  // Whether another copy is the running one. Asking changes nothing for anybody.
  virtual bool another_is_running() = 0;
};

}  // namespace homewarden
