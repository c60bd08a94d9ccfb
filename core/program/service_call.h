#pragma once

#include <string>

#include "core/module1.h"
#include "core/settings.h"
#include "platform/clock.h"

namespace homewarden {

// Remembers that a window which closed has left the house to the background service, until the
// service has taken it: so that the next window can tell of one that never came.
class ServiceCall {
 public:
  ServiceCall(Module1& module1, const Clock& clock) : module1_(module1), clock_(clock) {}

  // The window starts the service; the service has the house.
  void made() { write(std::to_string(minute())); }
  void answered();

  // Whether it was made longer ago than the service takes for its start, and not answered. Asked
  // once: the next answer is false.
  bool was_in_vain();

 private:
  long minute() const;
  void write(const std::string& text);

  Module1& module1_;
  const Clock& clock_;
};

}  // namespace homewarden
