#include "tools/emulator/modules.h"

#include <algorithm>
#include <optional>

#include "platform/interface_control.h"

namespace homewarden::emulator {

namespace {

void act_lamp(ModuleState& lamp, int function, int steps) {
  switch (function) {
    case kX10On:
      // A lamp that is on keeps its level; one that is off does not remember the level it had.
      if (!lamp.on) lamp.level = cm11::kDimSteps;
      lamp.on = true;
      break;
    case kX10Off:
      lamp.on = false;
      break;
    case kX10Dim:
      if (lamp.on) lamp.level = std::max(lamp.level - steps, 0);
      break;
    case kX10Bright:
      // Lamp modules of the old kind jump to full brightness when they are off.
      lamp.level = lamp.on ? std::min(lamp.level + steps, cm11::kDimSteps) : cm11::kDimSteps;
      lamp.on = true;
      break;
    default:
      break;
  }
}

void act(ModuleState& module, int function, int steps) {
  if (module.type == ModuleType::kLamp) act_lamp(module, function, steps);
  if (module.type == ModuleType::kAppliance) {
    if (function == kX10On) module.on = true;
    if (function == kX10Off) module.on = false;
  }
}

// A function for a whole house does to the modules it is for what On or Off would do.
struct HouseFunction {
  int does;
  bool lamps_only;
};

std::optional<HouseFunction> house_function(int function) {
  switch (function) {
    case kX10AllUnitsOff:
      return HouseFunction{kX10Off, false};
    case kX10AllLightsOn:
      return HouseFunction{kX10On, true};
    case kX10AllLightsOff:
      return HouseFunction{kX10Off, true};
    default:
      return std::nullopt;
  }
}

}  // namespace

std::string ModuleState::text() const {
  if (type == ModuleType::kNone) return "no module";
  if (!on) return "off";
  if (type == ModuleType::kAppliance) return "on";
  return "on " + std::to_string((level * 200 + cm11::kDimSteps) / (2 * cm11::kDimSteps)) + " %";
}

Modules::Modules(const std::vector<ModulePlace>& places) {
  if (places.empty())
    for (auto& module : modules_) module.type = ModuleType::kLamp;
  for (const auto& place : places) {
    auto& module = modules_[index(place.address)];
    module.type = place.type;
    if (!place.name.empty()) module.name = place.name;
  }
}

void Modules::hear_address(cm11::Address address) {
  auto& house = houses_[static_cast<std::size_t>(address.house)];
  if (house.function_heard) house.selected.reset();
  house.function_heard = false;
  house.selected.set(static_cast<std::size_t>(address.unit - 1));
}

std::vector<cm11::Address> Modules::hear_function(int house, int function, int steps) {
  houses_[static_cast<std::size_t>(house)].function_heard = true;
  const auto whole_house = house_function(function);
  std::vector<cm11::Address> meant;
  if (whole_house) {
    for (int unit = 1; unit <= 16; ++unit) {
      const auto type = at({house, unit}).type;
      const bool fits =
          whole_house->lamps_only ? type == ModuleType::kLamp : type != ModuleType::kNone;
      if (fits) meant.push_back({house, unit});
    }
  } else {
    for (const int unit : selected(house)) meant.push_back({house, unit});
  }
  for (const auto& address : meant)
    act(modules_[index(address)], whole_house ? whole_house->does : function, steps);
  return meant;
}

std::vector<int> Modules::selected(int house) const {
  const auto& set = houses_[static_cast<std::size_t>(house)].selected;
  std::vector<int> units;
  for (int unit = 1; unit <= 16; ++unit)
    if (set.test(static_cast<std::size_t>(unit - 1))) units.push_back(unit);
  return units;
}

}  // namespace homewarden::emulator
