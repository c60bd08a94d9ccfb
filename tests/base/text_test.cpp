#include "base/text.h"

#include <gtest/gtest.h>

#include <vector>

#include "base/lines.h"
#include "core/replace_file.h"
#include "tests/platform/memory_files.h"

namespace homewarden::testing {
namespace {

TEST(Text, SearchIgnoresCaseAlsoOfAccentedLetters) {
  EXPECT_EQ(find_ignoring_case("Big KITCHEN~Lamp~", "kitchen~lamp~"), 4u);
  EXPECT_TRUE(contains_ignoring_case("B\xDCro", "b\xFCRO"));
  EXPECT_FALSE(contains_ignoring_case("a\xD7", "a\xF7")) << "multiplication sign, division sign";
  EXPECT_TRUE(contains_ignoring_case("anything", ""));
  EXPECT_TRUE(contains_ignoring_case("", ""));
  EXPECT_FALSE(contains_ignoring_case("", "a"));
  EXPECT_TRUE(equals_ignoring_case("Htaccess.TXT", "htaccess.txt"));
  EXPECT_FALSE(equals_ignoring_case("ab", "abc"));
}

TEST(Text, NumbersAtTheBeginning) {
  const std::vector<std::pair<const char*, double>> cases = {
      {"12abc", 12}, {"abc", 0}, {"", 0},      {" -3 ", -3}, {"+2", 2},   {"51.3", 51.3},
      {"inf", 0},    {"nan", 0}, {"-.5", -.5}, {"1e3", 1},   {"0x10", 0}, {"--1", 0}};
  for (const auto& [text, number] : cases) EXPECT_DOUBLE_EQ(leading_number(text), number) << text;
}

TEST(Text, WholeIntegersOf16Bits) {
  EXPECT_EQ(to_integer16(" 12 "), 12);
  EXPECT_EQ(to_integer16("-32768"), -32768);
  for (const char* bad : {"", " ", "32768", "1x", "1.5", "one", "99999999999999"})
    EXPECT_FALSE(to_integer16(bad)) << bad;
}

TEST(Text, RoundingAndWriting) {
  EXPECT_EQ(round_to_even(0.5), 0);
  EXPECT_EQ(round_to_even(1.5), 2);
  EXPECT_EQ(round_to_even(2.5), 2);
  EXPECT_EQ(round_to_even(-0.5), 0);
  EXPECT_EQ(round_to_even(-1.5), -2);
  EXPECT_EQ(round_to_even(2.4999), 2);
  EXPECT_EQ(text_of_single(1507.5F), "1507.5");
  EXPECT_EQ(text_of_single(100.0F), "100");
  EXPECT_EQ(without_blanks(" a b  c "), "abc");
  EXPECT_EQ(replace_all("a~b~~", "~", " "), "a b  ");
}

TEST(Lines, EveryKindOfEndAndNoEnd) {
  LineReader reader("a\r\nb\nc\r\r\n\nlast");
  std::vector<std::string> lines;
  while (const auto line = reader.next()) lines.emplace_back(*line);
  EXPECT_EQ(lines, (std::vector<std::string>{"a", "b", "c", "", "", "last"}));
  EXPECT_FALSE(LineReader("").next());
}

TEST(ReplaceFile, AStopAtAnyStepLeavesTheOldOrTheNewContent) {
  for (int stop = 1; stop <= 3; ++stop) {
    MemoryFiles files;
    files.contents["list"] = "old";
    files.stop_at(stop);
    const bool replaced = replace_file(files, "list", "new content");
    EXPECT_EQ(replaced, stop == 3);
    EXPECT_EQ(files.contents["list"], stop == 3 ? "new content" : "old");
    files.no_stop();
    discard_unfinished(files, "list");
    EXPECT_EQ(files.contents.size(), 1u) << "a scratch file was left behind";
  }
}

}  // namespace
}  // namespace homewarden::testing
