#pragma once

#include <string>

#include "core/module1.h"

namespace homewarden {

// Stands for a level that was not given.
inline constexpr int kNoLevel = -1;

// The remembered state of every device, kept where the service sees it too. `keyname` is the room
// name followed by the device name, with or without their blanks.
class DeviceState {
 public:
  explicit DeviceState(Module1& module1) : module1_(module1) {}

  // Records the state: on when `state` is exactly "on". `level` is what `turnon` left in its
  // percent (100 minus the level that was set, or 100) and becomes the level in percent that is
  // recorded; 0 stands for 20, kNoLevel for the level that a device which is on has already and for
  // 100 otherwise. A device that is off is recorded at 20.
  void setstatus(const std::string& keyname, const std::string& state, int& level);

  // Whether the device is recorded as on.
  bool getlaststatus(const std::string& keyname);

  // Removes what is recorded of a device that is no more.
  void forget(const std::string& keyname);

  // The level recorded, in percent; 100 when there is none or it is no number.
  int level(const std::string& keyname);

 private:
  Module1& module1_;
};

}  // namespace homewarden
