#include "voice/character_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <sstream>

#include "voice/path_data.h"

namespace homewarden::testing {
namespace {

using ::testing::HasSubstr;

std::string the_programs_own() {
  std::ifstream file(HOMEWARDEN_SOURCES "/characters/merlin.acs", std::ios::binary);
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

const std::string kHead = "homewarden-character 1\nname Dot\nsize 20 30\n";
const std::string kPoses =
    "pose idle\nframe 40\npose listening repeats\nframe 40\npose understood\nframe 40\n"
    "pose not-understood\nframe 40\n";

// Catches: a figure that is shipped and cannot be read, or has a pose that shows nothing.
TEST(CharacterFile, TheFigureOfTheProgramHasFourPoses) {
  const CharacterFile read = read_character(the_programs_own());
  ASSERT_TRUE(read.figure) << read.trouble;
  for (const FigurePose& pose : read.figure->poses)
    for (const FigureFrame& frame : pose.frames) EXPECT_GT(frame.shapes.size(), 5U);
  EXPECT_TRUE(read.figure->in(Pose::kListening).repeats);
  EXPECT_FALSE(read.figure->in(Pose::kIdle).repeats) << "an idle window must not wake";
}

TEST(CharacterFile, ShapesAreDrawnInTheirColoursAndPartsAreMoved) {
  const CharacterFile read = read_character(
      kHead +
      "colour skin #102030 #405060\npart eye\nfill skin\nopacity 50\npath M1 2l3-4.5.5.5h1z\n" +
      kPoses + "use eye 10 -1\nstroke amber 3\nellipse 5 6 2 1\n");
  ASSERT_TRUE(read.figure) << read.trouble;
  const auto& shapes = read.figure->in(Pose::kNotUnderstood).frames.front().shapes;
  ASSERT_EQ(shapes.size(), 2U);
  EXPECT_EQ(shapes[0].fill.light, 0x102030U);
  EXPECT_EQ(shapes[0].fill.dark, 0x405060U);
  EXPECT_EQ(shapes[0].opacity, 0.5);
  const Outline moved = *read_path("M11 1 L14-3.5 14.5-3 H15.5 z");
  const Outline& outline = shapes[0].outline;
  ASSERT_EQ(outline.size(), 5U) << "further points of a line are lines";
  for (std::size_t step = 0; step < 4; ++step)
    for (const std::size_t axis : {0U, 1U})
      EXPECT_EQ(outline[step].points[axis], moved[step].points[axis]) << step;
  EXPECT_EQ(shapes[1].fill.kind, FigureColour::Kind::kNone);
  EXPECT_EQ(shapes[1].stroke.role, FigureRole::kAmber);
}

// Catches: a message that does not say where; a file that takes memory without end.
TEST(CharacterFile, WhatIsWrongIsSaidWithItsLine) {
  const std::pair<std::string, std::string> wrong[] = {
      {"", "it is empty"},
      {"MZ\x90", "line 1: no character file"},
      {kHead, "the pose \"idle\" is missing"},
      {"homewarden-character 1\nsize 5 5\n", "line 2: a size"},
      {kHead + "path M1 1", "line 4: \"path\" cannot stand here"},
      {kHead + "frame 50", "line 4: a frame belongs"},
      {kHead + "pose idle\nframe 10", "line 5: a frame has a time"},
      {kHead + "pose dancing", "line 4: no pose"},
      {kHead + "part a\npath M1 1 A5 5 0 0 1 9 9", "line 5: the path"},
      {kHead + "part a\npath L1 1", "line 5: the path"},
      {kHead + "part a\npath M1 inf", "line 5: the path"},
      {kHead + "part a\nfill #12345", "line 5: this is no colour"},
      {kHead + "part a\nuse a", "line 5: a part cannot use itself"},
      {kHead + "part a\nellipse 1 1 nan 1", "line 5: an ellipse"},
      {std::string(300000, '\n'), "larger than 256 KB"},
  };
  for (const auto& [text, trouble] : wrong) {
    const CharacterFile read = read_character(text);
    EXPECT_FALSE(read.figure) << text.substr(0, 100);
    EXPECT_THAT(read.trouble, HasSubstr(trouble));
  }
  std::string growing = kHead + "part p0\nellipse 1 1 1 1\n";
  for (int part = 1; part < 60; ++part) {
    const std::string before = "use p" + std::to_string(part - 1) + "\n";
    growing += "part p" + std::to_string(part) + "\n" + before + before;
  }
  EXPECT_THAT(read_character(growing).trouble, HasSubstr("too many shapes"));
}

// Catches: a damaged file that ends the program.
TEST(CharacterFile, AFileThatIsDamagedAnywhereIsReadOrRefused) {
  const std::string whole = the_programs_own();
  std::mt19937 dice(15);
  for (int round = 0; round < 300; ++round) {
    std::string damaged = whole.substr(0, dice() % 3 == 0 ? dice() % whole.size() : whole.size());
    for (int hit = 0; hit < 5 && !damaged.empty(); ++hit)
      damaged[dice() % damaged.size()] = static_cast<char>(dice());
    const CharacterFile read = read_character(damaged);
    EXPECT_EQ(read.figure.has_value(), read.trouble.empty());
  }
}

}  // namespace
}  // namespace homewarden::testing
