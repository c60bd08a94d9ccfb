#include "voice/character_file.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>
#include <vector>

#include "base/code_page.h"
#include "base/text.h"
#include "voice/character_words.h"
#include "voice/path_data.h"

namespace homewarden {
namespace {

constexpr std::size_t kLargestFile = 256 * 1024;
constexpr std::size_t kMostNamed = 200;    // colours, and parts
constexpr std::size_t kMostFrames = 60;    // of a pose
constexpr std::size_t kMostShapes = 300;   // of a frame
constexpr std::size_t kMostSteps = 50000;  // of all outlines that are kept
constexpr int kSmallest = 16;
constexpr int kBiggest = 512;
constexpr int kShortest = 40;  // milliseconds of a frame
constexpr int kLongest = 10000;
constexpr std::size_t kLongestName = 60;

constexpr std::pair<std::string_view, Pose> kPoseNames[] = {
    {"idle", Pose::kIdle},
    {"listening", Pose::kListening},
    {"understood", Pose::kUnderstood},
    {"not-understood", Pose::kNotUnderstood}};
using Words = std::vector<std::string_view>;

// How shapes are drawn from here on.
struct Pen {
  FigureColour fill;
  FigureColour stroke;
  double width = 1;
  double opacity = 1;
};

class Reader {
 public:
  CharacterFile read(std::string_view text) {
    if (text.size() > kLargestFile) return {{}, "it is larger than 256 KB"};
    int number = 0;
    while (!text.empty()) {
      ++number;
      const auto end = std::min(text.find('\n'), text.size());
      std::string_view line = text.substr(0, end);
      text.remove_prefix(std::min(end + 1, text.size()));
      if (line.ends_with('\r')) line.remove_suffix(1);
      const Words words = words_of(line);
      if (words.empty() || words.front().front() == '#') continue;
      const std::string trouble = take(words, line);
      if (!trouble.empty()) return {{}, "line " + std::to_string(number) + ": " + trouble};
    }
    const std::string trouble = missing();
    if (!trouble.empty()) return {{}, trouble};
    return {std::move(figure_), ""};
  }

 private:
  std::string take(const Words& words, std::string_view line) {
    const std::string_view what = words.front();
    if (!begun_) {
      begun_ = what == "homewarden-character" && words.size() == 2 && words[1] == "1";
      return begun_ ? "" : "no character file of version 1";
    }
    if (what == "name") return take_name(line.substr(line.find("name") + 4));
    if (what == "size") return take_size(words);
    if (what == "colour") return take_colour(words);
    if (what == "part") return take_part(words);
    if (what == "pose") return take_pose(words);
    if (what == "frame") return take_frame(words);
    if (!shapes_) return "\"" + on_one_line(what, 20) + "\" cannot stand here";
    if (what == "fill") return take_fill(words);
    if (what == "stroke") return take_stroke(words);
    if (what == "opacity") return take_opacity(words);
    if (what == "use") return take_use(words);
    if (what == "ellipse") return take_ellipse(words);
    if (what == "path") {
      auto outline = read_path(line.substr(line.find("path") + 4));
      return outline ? add(std::move(*outline)) : "the path cannot be read";
    }
    return "nothing is called \"" + on_one_line(what, 20) + "\"";
  }

  std::string take_name(std::string_view name) {
    figure_.name = on_one_line(from_utf8(std::string(trim_blanks(name))), kLongestName);
    return "";
  }

  std::string take_size(const Words& words) {
    const auto width = number_at(words, 1, kSmallest, kBiggest);
    const auto height = number_at(words, 2, kSmallest, kBiggest);
    if (!width || !height) return "a size is two numbers from 16 to 512";
    figure_.width = static_cast<int>(*width);
    figure_.height = static_cast<int>(*height);
    return "";
  }

  // A name, and the colour in a light window and, if another, in a dark one.
  std::string take_colour(const Words& words) {
    if (words.size() < 3 || words.size() > 4) return "a colour has a name and a value or two";
    if (colours_.size() >= kMostNamed) return "there are too many colours";
    const auto light = colour_in(words[2]);
    const auto dark = colour_in(words.back());
    if (!light || !dark) return "\"" + on_one_line(words.back(), 20) + "\" is no colour";
    FigureColour colour = *light;
    if (colour.kind == FigureColour::Kind::kValue) colour.dark = dark->dark;
    colours_[std::string(words[1])] = colour;
    return "";
  }

  std::optional<FigureColour> colour_in(std::string_view word) const {
    if (word == "none") return FigureColour{};
    const auto named = colours_.find(std::string(word));
    if (named != colours_.end()) return named->second;
    return plain_colour(word);
  }

  std::string take_part(const Words& words) {
    if (words.size() != 2) return "a part has a name";
    if (parts_.size() >= kMostNamed) return "there are too many parts";
    begin_shapes(parts_[std::string(words[1])]);
    shapes_->clear();
    return "";
  }

  std::string take_pose(const Words& words) {
    const bool repeats = words.size() == 3 && words[2] == "repeats";
    if (words.size() != 2 && !repeats) return "a pose has a name, and may say \"repeats\"";
    const auto* const known = std::find_if(std::begin(kPoseNames), std::end(kPoseNames),
                                           [&](const auto& one) { return one.first == words[1]; });
    if (known == std::end(kPoseNames)) return "no pose is called so";
    pose_ = &figure_.poses[static_cast<std::size_t>(known->second)];
    if (!pose_->frames.empty()) return "this pose is there already";
    pose_->repeats = repeats;
    shapes_ = nullptr;
    return "";
  }

  std::string take_frame(const Words& words) {
    const auto time = number_at(words, 1, kShortest, kLongest);
    if (!pose_) return "a frame belongs to a pose";
    if (!time) return "a frame has a time from 40 to 10000 milliseconds";
    if (pose_->frames.size() >= kMostFrames) return "there are too many frames";
    pose_->frames.push_back({static_cast<int>(*time), {}});
    begin_shapes(pose_->frames.back().shapes);
    return "";
  }

  void begin_shapes(std::vector<FigureShape>& shapes) {
    shapes_ = &shapes;
    pen_ = Pen();
  }

  std::string take_fill(const Words& words) {
    const auto colour = words.size() == 2 ? colour_in(words[1]) : std::nullopt;
    if (!colour) return "this is no colour to fill with";
    pen_.fill = *colour;
    return "";
  }

  std::string take_stroke(const Words& words) {
    const auto colour = words.size() >= 2 ? colour_in(words[1]) : std::nullopt;
    const auto width = words.size() == 2 ? 1.0 : number_at(words, 2, 0, kBiggest);
    if (!colour || !width) return "a stroke has a colour and a width";
    pen_.stroke = *colour;
    pen_.width = *width;
    return "";
  }

  std::string take_opacity(const Words& words) {
    const auto percent = number_at(words, 1, 0, 100);
    if (!percent) return "an opacity is a number from 0 to 100";
    pen_.opacity = *percent / 100;
    return "";
  }

  std::string take_ellipse(const Words& words) {
    const auto x = number_at(words, 1, -kFarthest, kFarthest);
    const auto y = number_at(words, 2, -kFarthest, kFarthest);
    const auto width = number_at(words, 3, 0, kFarthest);
    const auto height = number_at(words, 4, 0, kFarthest);
    if (!x || !y || !width || !height) return "an ellipse has a middle and two half diameters";
    return add(ellipse(*x, *y, *width, *height));
  }

  std::string add(Outline outline) {
    return add(FigureShape{std::move(outline), pen_.fill, pen_.stroke, pen_.width, pen_.opacity});
  }
  std::string add(FigureShape shape) {
    steps_ += shape.outline.size();
    if (shapes_->size() >= kMostShapes || steps_ > kMostSteps) return "there are too many shapes";
    shapes_->push_back(std::move(shape));
    return "";
  }

  // A part as it has been described so far, moved.
  std::string take_use(const Words& words) {
    const auto part = words.size() >= 2 ? parts_.find(std::string(words[1])) : parts_.end();
    if (part == parts_.end()) return "no part before is called so";
    if (&part->second == shapes_) return "a part cannot use itself";
    const auto right = words.size() > 2 ? number_at(words, 2, -kBiggest, kBiggest) : 0.0;
    const auto down = words.size() > 3 ? number_at(words, 3, -kBiggest, kBiggest) : 0.0;
    if (!right || !down) return "a part is moved by two numbers from -512 to 512";
    for (FigureShape shape : part->second) {
      for (PathStep& step : shape.outline)
        for (std::size_t i = 0; i < step.points.size(); i += 2) {
          step.points[i] += *right;
          step.points[i + 1] += *down;
        }
      const std::string trouble = add(std::move(shape));
      if (!trouble.empty()) return trouble;
    }
    return "";
  }

  static std::optional<double> number_at(const Words& words, std::size_t place, double least,
                                         double most) {
    const auto number = place < words.size() ? number_in(words[place]) : std::nullopt;
    return number && *number >= least && *number <= most ? number : std::nullopt;
  }

  std::string missing() const {
    if (!begun_) return "it is empty";
    if (figure_.name.empty()) return "it has no name";
    if (figure_.width == 0) return "it has no size";
    for (const auto& [name, pose] : kPoseNames)
      if (figure_.in(pose).frames.empty())
        return "the pose \"" + std::string(name) + "\" is missing";
    return "";
  }

  bool begun_ = false;
  Figure figure_;
  std::map<std::string, FigureColour> colours_;
  std::map<std::string, std::vector<FigureShape>> parts_;
  FigurePose* pose_ = nullptr;
  std::vector<FigureShape>* shapes_ = nullptr;  // of the part or frame that is described
  Pen pen_;
  std::size_t steps_ = 0;
};

}  // namespace

CharacterFile read_character(std::string_view text) {
  return Reader().read(text);
}

}  // namespace homewarden
