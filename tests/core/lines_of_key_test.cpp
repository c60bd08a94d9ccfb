// Which lines of an event or macro list a key text means.

#include "core/lines_of_key.h"

#include <gmock/gmock.h>

#include "automation/event_record.h"
#include "automation/macro_line.h"

namespace homewarden::testing {
namespace {

struct Case {
  const char* what;
  std::string content;
  const char* key;
  const char* chosen;
};

using LinesOf = ListFile::Choice (*)(std::string_view content, std::string key);

void expect_chosen(LinesOf lines_of, const std::vector<Case>& cases) {
  for (const Case& c : cases)
    EXPECT_EQ(chosen_lines(c.content, lines_of(c.content, c.key)), c.chosen) << c.what;
}

TEST(LinesOfKey, TheExactOneGoesBeforeThoseThatContainIt) {
  expect_chosen(lines_of_event,
                {{"nothing is the key, but lines that contain it stayed",
                  "Big Lamp~A\r\nFan\r\nmy lamp~ab", "Lamp~A", "Big Lamp~A\r\nmy lamp~ab"},
                 {"an empty key took something", "\r\n\r\nLamp\r\n", "", ""}});
}

TEST(LinesOfKey, AOnceEventIsItsLineWithAnyDays) {
  expect_chosen(lines_of_once_event,
                {{"a longer word was the key", "Lamp~A~onces~m\r\nMy Lamp~A~once~m\r\n",
                  "Lamp~A~once", "Lamp~A~onces~m\r\nMy Lamp~A~once~m"}});
}

TEST(LinesOfKey, AMacroIsFoundByItsShownText) {
  const std::string fan = "When~A1~Hall~turns~on~Turn~On~B2~Porch~Fan";
  const LinesOf lines_of = [](std::string_view content, std::string key) {
    return lines_of_macro(content, key);
  };
  const char* const shown = "When A1 Hall turns on Turn On B2 Porch Fan";
  expect_chosen(lines_of, {{"a line with a blank of its own cannot be deleted",
                            "When~A1~Hall~turns~on~Turn~On~B2~Porch Fan\r\n", shown,
                            "When~A1~Hall~turns~on~Turn~On~B2~Porch Fan"},
                           {"an empty line took all", "\r\n" + fan, "", ""}});
}

}  // namespace
}  // namespace homewarden::testing
