#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <string>
#include <vector>

#include "platform/cm11/codes.h"

namespace homewarden::emulator {

enum class ModuleType { kNone, kLamp, kAppliance };

struct ModulePlace {
  cm11::Address address;
  ModuleType type = ModuleType::kLamp;
  std::string name = {};  // for people; may be empty
};

struct ModuleState {
  ModuleType type = ModuleType::kNone;
  std::string name;
  bool on = false;
  int level = 0;  // 0 to 22 steps of 1/22; means something for a lamp that is on

  // "on 59 %", "off"; an appliance has no percentage.
  std::string text() const;
};

// The modules plugged in round the house, and which of them listen.
//
// An address selects its unit until the first address after a function: several units addressed in
// a row share the functions that follow.
class Modules {
 public:
  // No places: a lamp module at every address.
  explicit Modules(const std::vector<ModulePlace>& places);

  void hear_address(cm11::Address address);

  // Functions as numbered by the protocol; `steps` of 1/22 for Dim and Bright. Returns the modules
  // that the function was for, whether or not it changed them: those that are addressed, or for the
  // functions that go to a whole house those of the right type.
  std::vector<cm11::Address> hear_function(int house, int function, int steps);

  const ModuleState& at(cm11::Address address) const { return modules_[index(address)]; }

  // The units of a house, as numbers 1 to 16, that the next function goes to.
  std::vector<int> selected(int house) const;

 private:
  struct House {
    std::bitset<16> selected;
    bool function_heard = false;  // the next address starts a new selection
  };

  static std::size_t index(cm11::Address address) {
    return static_cast<std::size_t>(address.house * 16 + address.unit - 1);
  }

  std::array<ModuleState, 256> modules_;
  std::array<House, 16> houses_;
};

}  // namespace homewarden::emulator
