#include "x10/device_state.h"

#include <algorithm>

#include "base/text.h"
#include "core/settings.h"

namespace homewarden {

void DeviceState::setstatus(const std::string& keyname, const std::string& state, int& level) {
  const bool on = state == "on";
  if (level == 0) {
    level = 20;
  } else if (level == kNoLevel) {
    level = getlaststatus(keyname) ? this->level(keyname) : 100;
  } else if (level != 100 && (on || level != 20)) {
    // With "on", 20 is what turnon leaves of 80; with anything else it is the level of being off.
    level = 100 - level;
  }

  const std::string name = without_blanks(keyname);
  module1_.regwrite(RegistryRoot::kLocalMachine, kMachineKey, name, on ? "True" : "False");
  module1_.regwrite(RegistryRoot::kLocalMachine, kMachineKey, "dim" + name,
                    on ? std::to_string(level) : "20");
}

bool DeviceState::getlaststatus(const std::string& keyname) {
  return module1_.regread(RegistryRoot::kLocalMachine, kMachineKey, without_blanks(keyname),
                          "False") == "True";
}

int DeviceState::level(const std::string& keyname) {
  const std::string text = module1_.regread(RegistryRoot::kLocalMachine, kMachineKey,
                                            "dim" + without_blanks(keyname), "100");
  return std::clamp(to_integer16(text).value_or(100), 0, 100);
}

void DeviceState::forget(const std::string& keyname) {
  const std::string name = without_blanks(keyname);
  module1_.regdelete(RegistryRoot::kLocalMachine, kMachineKey, name);
  module1_.regdelete(RegistryRoot::kLocalMachine, kMachineKey, "dim" + name);
}

}  // namespace homewarden
