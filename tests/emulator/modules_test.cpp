#include "tools/emulator/modules.h"

#include <gtest/gtest.h>

#include "platform/interface_control.h"

namespace homewarden::emulator {
namespace {

constexpr cm11::Address kA1{0, 1};
constexpr cm11::Address kA2{0, 2};
constexpr cm11::Address kB1{1, 1};

Modules house() {
  return Modules({{kA1, ModuleType::kLamp, "Hall, Lamp"},
                  {kA2, ModuleType::kAppliance, ""},
                  {kB1, ModuleType::kLamp, ""}});
}

void tell(Modules& modules, cm11::Address address, int function, int steps = 0) {
  modules.hear_address(address);
  modules.hear_function(address.house, function, steps);
}

// Programs that reach a level by On, Bright and Dim depend on each of these quirks.
TEST(Modules, LampsOfTheOldKind) {
  Modules modules = house();
  const auto& lamp = modules.at(kA1);
  tell(modules, kA1, kX10Dim, 5);
  EXPECT_EQ(lamp.text(), "off") << "dark lamps do not dim";
  tell(modules, kA1, kX10Bright, 1);
  EXPECT_EQ(lamp.text(), "on 100 %") << "the first Bright jumps to full";
  tell(modules, kA1, kX10Dim, 9);
  EXPECT_EQ(lamp.text(), "on 59 %");
  tell(modules, kA1, kX10On);
  EXPECT_EQ(lamp.text(), "on 59 %") << "On leaves a lamp that is on alone";
  tell(modules, kA1, kX10Bright, 3);
  EXPECT_EQ(lamp.text(), "on 73 %");
  tell(modules, kA1, kX10Dim, 31);
  EXPECT_EQ(lamp.text(), "on 0 %");
  tell(modules, kA1, kX10Off);
  tell(modules, kA1, kX10On);
  EXPECT_EQ(lamp.text(), "on 100 %") << "the level does not outlive Off";
}

TEST(Modules, AppliancesSwitchAndDoNothingElse) {
  Modules modules = house();
  tell(modules, kA2, kX10Bright, 5);
  modules.hear_function(0, kX10AllLightsOn, 0);
  EXPECT_EQ(modules.at(kA2).text(), "off");
  tell(modules, kA2, kX10On);
  tell(modules, kA2, kX10Dim, 22);
  modules.hear_function(0, kX10AllLightsOff, 0);
  EXPECT_EQ(modules.at(kA2).text(), "on");
  tell(modules, kA2, kX10Off);
  EXPECT_EQ(modules.at(kA2).text(), "off");
}

TEST(Modules, FunctionsForAWholeHouseStayInIt) {
  Modules modules = house();
  EXPECT_EQ(modules.hear_function(0, kX10AllLightsOn, 0), std::vector{kA1});
  EXPECT_EQ(modules.at(kA1).text(), "on 100 %");
  EXPECT_EQ(modules.at(kB1).text(), "off");
  tell(modules, kA2, kX10On);
  tell(modules, kB1, kX10On);
  EXPECT_EQ(modules.hear_function(0, kX10AllUnitsOff, 0), (std::vector{kA1, kA2}));
  EXPECT_EQ(modules.at(kA1).text(), "off");
  EXPECT_EQ(modules.at(kA2).text(), "off");
  EXPECT_EQ(modules.at(kB1).text(), "on 100 %");
}

// Units stay selected until the first address after a function: both halves of the rule.
TEST(Modules, SelectionLastsUntilTheNextAddressAfterAFunction) {
  Modules modules = house();
  modules.hear_address(kA1);
  modules.hear_address(kB1);
  modules.hear_address(kA2);
  EXPECT_EQ(modules.hear_function(0, kX10On, 0), (std::vector{kA1, kA2}));
  EXPECT_EQ(modules.hear_function(0, kX10Dim, 4), (std::vector{kA1, kA2}));
  EXPECT_EQ(modules.selected(1), std::vector{1}) << "houses do not disturb each other";
  modules.hear_address(kA2);
  EXPECT_EQ(modules.hear_function(0, kX10Off, 0), std::vector{kA2});
  EXPECT_EQ(modules.at(kA1).text(), "on 82 %");
  EXPECT_TRUE(modules.hear_function(5, kX10On, 0).empty());
}

TEST(Modules, AHouseWithNamedModulesHasNoOthers) {
  Modules modules = house();
  tell(modules, {0, 9}, kX10On);
  EXPECT_EQ(modules.at({0, 9}).text(), "no module");
  EXPECT_EQ(Modules({}).at({15, 16}).type, ModuleType::kLamp);
}

}  // namespace
}  // namespace homewarden::emulator
