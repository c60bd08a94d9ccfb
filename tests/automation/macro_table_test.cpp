// Macro lines as they are written, read and chained.

#include <gmock/gmock.h>

#include "automation/macro_chain.h"
#include "automation/macro_line.h"

namespace homewarden::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string line_of(const char* trigger, const char* event, const char* target,
                    const char* action) {
  const auto macro = macro_of_choices(trigger, event, target, action);
  return macro ? macro_line(*macro) : "";
}

// "A1 2 > B12 3"
std::string parsed(const std::string& line) {
  const auto macro = parse_macro(line);
  if (!macro) return "";
  return macro->trigger.code() + " " + std::to_string(macro->trigger.function) + " > " +
         macro->target.code() + " " + std::to_string(macro->target.function);
}

TEST(MacroLine, WhatIsSavedIsReadBack) {
  EXPECT_EQ(line_of("Hall Lamp A1", "On", "Porch Fan B12", "Turn On"),
            "When~A1~Hall~Lamp~turns~on~Turn~On~B12~Porch~Fan");
  struct Case {
    const char* trigger;
    const char* event;
    const char* target;
    const char* action;
    const char* read;
  };
  for (const Case& c : {Case{"Hall Lamp A1", "On", "Porch Fan B12", "Turn On", "A1 2 > B12 2"},
                        {"Kitchen Lamp A12", "Off", "Fan B2", "Turn Off", "A12 3 > B2 3"},
                        {"Kitchen Lamp A3", "Dim", "Return Vent P16", "Turn On", "A3 4 > P16 2"},
                        {"Return Vent A3", "On", "Fan B2", "Turn Off", "A3 2 > B2 3"}})
    EXPECT_EQ(parsed(line_of(c.trigger, c.event, c.target, c.action)), c.read) << c.trigger;
  const auto macro = macro_of_choices("Hall Lamp A1", "Dim", "Porch Fan B12", "Turn Off");
  EXPECT_EQ(in_words(macro->trigger), "Hall Lamp A1 turns dim");
  EXPECT_EQ(in_words(parse_macro(macro_line(*macro))->trigger), "Hall Lamp A1 turns dim");
  EXPECT_EQ(in_words(macro->target), "Porch Fan B12 turns off");
}

TEST(MacroLine, WhatIsNoMacroIsRefused) {
  EXPECT_EQ(line_of("", "On", "Fan B2", "Turn On"), "");
  EXPECT_EQ(line_of("A", "On", "Fan B2", "Turn On"), "");
  EXPECT_EQ(line_of("Lamp A1", "On", "Fan", "Turn On"), "") << "no address";
  EXPECT_EQ(line_of("Lamp A1", "Blink", "Fan B2", "Turn On"), "");
  EXPECT_EQ(line_of("Lamp A1", "On", "Fan B2", "Explode"), "");
  for (const char* line : {"", "When", "When~A1", "When~A1~Lamp~turns~on", "~~~~",
                           "When~A1~Lamp~Turn~On~B2~Fan", "When~A1~Lamp~turns~on~Turn~Up~B2"})
    EXPECT_EQ(parsed(line), "") << line;
}

TEST(MacroLine, LinesOfOtherHands) {
  EXPECT_EQ(parsed("When~A3~Hall~Lamp~Dimms~Turn~On~B2~Fan"), "A3 4 > B2 2") << "an older list";
  EXPECT_EQ(parsed("when~a3~hall~lamp~TURNS~OFF~turn~off~b2~fan"), "a3 3 > b2 3");
  EXPECT_EQ(parsed("When~A1~Lamp~turns~on~Turn~On~B2"), "A1 2 > B2 2") << "no name behind";
  EXPECT_EQ(parsed("When~A1~Lamp~turns~on~Turn~On~odd~Fan"), "A1 2 > odd 2")
      << "the target is taken as it stands";
  EXPECT_EQ(parsed("When~A1~Lamp~turns~on~Turn~On~B02~Fan"), "A1 2 > B02 2");
  EXPECT_EQ(parsed("When~A1~Lamp~turns~on~Turn~On~Q2~Fan"), "A1 2 > Q2 2");
}

TEST(MacroLine, FindsChainsThatGoRoundForEver) {
  const auto macro = [](const char* trigger, const char* event, const char* target,
                        const char* action) {
    return *macro_of_choices(trigger, event, target, action);
  };
  const auto words = [](const std::vector<MacroEnd>& chain) {
    std::vector<std::string> texts;
    for (const MacroEnd& end : chain) texts.push_back(in_words(end));
    return texts;
  };
  const std::vector<Macro> macros = {
      macro("Fan B1", "On", "Bell C1", "Turn On"), macro("Fan B1", "On", "Radio D1", "Turn On"),
      macro("Radio D1", "On", "Lamp A1", "Turn On"), macro("Lamp A1", "Off", "Fan B1", "Turn On")};
  EXPECT_THAT(
      words(endless_chain(macros, macro("Lamp A1", "On", "Fan B1", "Turn On"))),
      ElementsAre("Lamp A1 turns on", "Fan B1 turns on", "Radio D1 turns on", "Lamp A1 turns on"));
  EXPECT_THAT(words(endless_chain({}, macro("Lamp A1", "On", "Lamp A1", "Turn On"))),
              ElementsAre("Lamp A1 turns on", "Lamp A1 turns on"));
  auto in_a_house = macros;
  EXPECT_THAT(words(endless_chain_among(in_a_house)), ::testing::IsEmpty());
  in_a_house.push_back(macro("Lamp A1", "On", "Fan B1", "Turn On"));
  EXPECT_THAT(words(endless_chain_among(in_a_house)), ::testing::SizeIs(4))
      << "the one that leads away from the way round hid it";
  for (const Macro& harmless :
       {macro("Lamp A1", "On", "Fan B1", "Turn Off"), macro("Bell C1", "On", "Bell C1", "Turn Off"),
        macro("Lamp A1", "Dim", "Fan B1", "Turn On")})
    EXPECT_THAT(endless_chain(macros, harmless), IsEmpty());
}

}  // namespace
}  // namespace homewarden::testing
