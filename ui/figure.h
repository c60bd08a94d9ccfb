#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace homewarden {

// A drawn figure in its poses: what a character file holds and a face paints.

enum class Pose { kIdle, kListening, kUnderstood, kNotUnderstood };
inline constexpr std::size_t kPoses = 4;

// Colours of the window by what they are for; the face knows which they are, light and dark.
enum class FigureRole { kCard, kLine, kEdge, kText, kQuiet, kPrimary, kLink, kAmber, kInk, kWarm };

struct FigureColour {
  enum class Kind { kNone, kRole, kValue };
  Kind kind = Kind::kNone;
  FigureRole role = FigureRole::kText;
  std::uint32_t light = 0;  // 0xrrggbb
  std::uint32_t dark = 0;

  bool operator==(const FigureColour&) const = default;
};

// A piece of an outline. A line and a move have one point, a curve two points that pull at it and
// its end, a close none.
struct PathStep {
  enum class Kind { kMove, kLine, kCurve, kClose };
  Kind kind = Kind::kMove;
  std::array<double, 6> points = {};  // x and y in turn

  bool operator==(const PathStep&) const = default;
};
using Outline = std::vector<PathStep>;

struct FigureShape {
  Outline outline;
  FigureColour fill;
  FigureColour stroke;
  double stroke_width = 1;
  double opacity = 1;
};

struct FigureFrame {
  int milliseconds = 0;             // how long it is shown when another follows
  std::vector<FigureShape> shapes;  // the lowest first
};

// A pose that does not repeat ends with its last frame.
struct FigurePose {
  std::vector<FigureFrame> frames;  // one at least
  bool repeats = false;
};

struct Figure {
  std::string name;
  int width = 0;  // of the place in which the shapes lie, from 0, y downwards
  int height = 0;
  std::array<FigurePose, kPoses> poses;

  const FigurePose& in(Pose pose) const { return poses[static_cast<std::size_t>(pose)]; }
};

}  // namespace homewarden
