#include "voice/path_data.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <system_error>

namespace homewarden {
namespace {

using Kind = PathStep::Kind;

constexpr double kFarthest = 10000;
constexpr std::size_t kMostSteps = 2000;
constexpr double kRound = 0.5522847498;  // makes a curve a quarter of a circle

struct Point {
  double x = 0;
  double y = 0;
};

bool is_letter(char sign) {
  return (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z');
}

class PathReader {
 public:
  explicit PathReader(std::string_view data) : rest_(data) {}

  std::optional<Outline> read() {
    skip();
    while (!rest_.empty()) {
      if (is_letter(rest_.front())) {
        command_ = rest_.front();
        rest_.remove_prefix(1);
        skip();
      } else if (command_ == 0 || command_ == 'Z' || command_ == 'z') {
        return {};
      } else if (command_ == 'M' || command_ == 'm') {
        command_ = command_ == 'M' ? 'L' : 'l';  // further points of a move are lines
      }
      if (!step() || outline_.size() > kMostSteps) return {};
    }
    if (outline_.empty()) return {};
    return outline_;
  }

 private:
  bool step() {
    const bool relative = command_ >= 'a';
    const Point from = relative ? at_ : Point{};
    const char kind = relative ? static_cast<char>(command_ - 'a' + 'A') : command_;
    if (outline_.empty() && kind != 'M') return false;
    switch (kind) {
      case 'M':
      case 'L':
        return point(from, at_) && line(kind == 'M' ? Kind::kMove : Kind::kLine);
      case 'H':
        return number(at_.x, from.x) && line(Kind::kLine);
      case 'V':
        return number(at_.y, from.y) && line(Kind::kLine);
      case 'C':
        return curve(from, true);
      case 'S':
        return curve(from, false);
      case 'Q':
        return soft_curve(from, true);
      case 'T':
        return soft_curve(from, false);
      case 'Z':
        add(Kind::kClose, {}, {}, {});
        at_ = pull_ = soft_pull_ = begin_;
        return true;
      default:
        return false;
    }
  }

  bool line(Kind kind) {
    if (kind == Kind::kMove) begin_ = at_;
    add(kind, at_, {}, {});
    pull_ = soft_pull_ = at_;
    return true;
  }

  static Point mirrored(Point point, Point at) { return {2 * at.x - point.x, 2 * at.y - point.y}; }

  bool curve(Point from, bool has_first) {
    Point first = mirrored(pull_, at_);
    Point second;
    Point end;
    if (has_first && !point(from, first)) return false;
    if (!point(from, second) || !point(from, end)) return false;
    add(Kind::kCurve, first, second, end);
    at_ = soft_pull_ = end;
    pull_ = second;
    return true;
  }

  bool soft_curve(Point from, bool has_pull) {
    Point pull = mirrored(soft_pull_, at_);
    Point end;
    if ((has_pull && !point(from, pull)) || !point(from, end)) return false;
    const auto toward = [pull](Point from_here) {
      return Point{from_here.x + (pull.x - from_here.x) * 2 / 3,
                   from_here.y + (pull.y - from_here.y) * 2 / 3};
    };
    add(Kind::kCurve, toward(at_), toward(end), end);
    at_ = pull_ = end;
    soft_pull_ = pull;
    return true;
  }

  void add(Kind kind, Point a, Point b, Point c) {
    outline_.push_back({kind, {a.x, a.y, b.x, b.y, c.x, c.y}});
  }

  bool point(Point from, Point& into) {
    Point read;
    if (!number(read.x, from.x) || !number(read.y, from.y)) return false;
    into = read;
    return true;
  }

  bool number(double& into, double from) {
    if (!rest_.empty() && rest_.front() == '+') rest_.remove_prefix(1);
    if (rest_.empty() || is_letter(rest_.front())) return false;
    double read = 0;
    const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), read);
    if (error != std::errc() || !(std::abs(read + from) <= kFarthest)) return false;
    into = read + from;
    rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
    skip();
    return true;
  }

  void skip() {
    const auto next = rest_.find_first_not_of(" \t,");
    rest_.remove_prefix(next == std::string_view::npos ? rest_.size() : next);
  }

  std::string_view rest_;
  char command_ = 0;
  Outline outline_;
  Point at_;
  Point begin_;      // of the part that a close goes back to
  Point pull_;       // of the curve before
  Point soft_pull_;  // the same for a curve with one
};

}  // namespace

std::optional<Outline> read_path(std::string_view data) {
  return PathReader(data).read();
}

Outline ellipse(double x, double y, double width, double height) {
  const double w = width * kRound;
  const double h = height * kRound;
  return {{Kind::kMove, {x + width, y}},
          {Kind::kCurve, {x + width, y + h, x + w, y + height, x, y + height}},
          {Kind::kCurve, {x - w, y + height, x - width, y + h, x - width, y}},
          {Kind::kCurve, {x - width, y - h, x - w, y - height, x, y - height}},
          {Kind::kCurve, {x + w, y - height, x + width, y - h, x + width, y}},
          {Kind::kClose, {}}};
}

}  // namespace homewarden
