// Which lines of the event and macro lists do nothing in a house.

#include "automation/event_effect.h"

#include <gmock/gmock.h>

#include "core/settings.h"
#include "tests/platform/memory_registry.h"

namespace homewarden::testing {
namespace {

class EventEffect : public ::testing::Test {
 protected:
  EventEffect() {
    house.set_lines({"Kitchen~Table Lamp~A~3", "Kitchen Table~Lamp~B~4", "Hall~Fan ~c~12"});
  }
  std::string event(const std::string& device) {
    return what_is_wrong_with(*parse_event(device + "~40~07:30~on~daily~m"), house);
  }
  std::string macro(const char* trigger, const char* target) {
    const auto parsed = parse_macro(std::string("When~") + trigger + "~turns~on~Turn~On~" + target);
    return what_is_wrong_with(*parsed, house);
  }

  MemoryRegistry registry;
  Settings settings{registry};
  HouseIndex house{settings};
};

TEST_F(EventEffect, NamesEventsThatActOnNothing) {
  for (const char* good : {"Kitchen Table Lamp~A~3", "KITCHEN table lamp~a~03",
                           "Kitchen Table Lamp~B~4", "Hall Fan~C~12"})
    EXPECT_EQ(event(good), "") << good << " is warned of though it works";
  EXPECT_EQ(event("Shed Lamp~A~3"), "Shed Lamp A3 is not in the house.");
  EXPECT_EQ(event("Hall Fan~C~1"), "Hall Fan has the address c12 in the house, not C1.");
  EXPECT_EQ(event("Hall Fan~C~17"),
            "This event never runs: its address is none (house codes are A to P, units 1 to 16).");
}

TEST_F(EventEffect, NamesMacrosThatActOnNothing) {
  EXPECT_EQ(macro("A3~Kitchen~Table~Lamp", "C12~Hall~Fan"), "");
  EXPECT_EQ(macro("A3~Kitchen~Table~Lamp", "C12"), "") << "a line without names";
  EXPECT_EQ(macro("P1~Wall~Button", "C12~Hall~Fan"), "Wall Button P1 is not in the house.");
  EXPECT_EQ(macro("A3~Kitchen~Table~Lamp", "C1"), "C1 is not in the house.") << "C12 is";
  EXPECT_EQ(macro("A3~Kitchen~Table~Lamp", "odd~Hall~Fan"), "\"odd\" is no address.");
  EXPECT_EQ(macro("A4~Kitchen~Table~Lamp", "C12~Hall~Fan"),
            "Kitchen Table Lamp has the address A3 in the house, not A4.");
}

}  // namespace
}  // namespace homewarden::testing
