#include "sun/solar_equations.h"

#include <cmath>

namespace homewarden {
namespace {

constexpr double kTwoPi = 6.283185307;
constexpr double kZenith = 90.833;

double arc_cosine(double x) noexcept {
  // Written so that what is not a number counts as out of range too.
  if (!(std::abs(x) < 1)) return 0;
  return std::atan(-x / std::sqrt(1 - x * x)) + 2 * std::atan(1.0);
}

}  // namespace

double degrees(double radians) noexcept {
  return radians * 180 / kPi;
}

double radians(double degrees) noexcept {
  return degrees * kPi / 180;
}

double fractional_year(int day_of_year, double hour) noexcept {
  return kTwoPi / 365 * (day_of_year - 1 + hour / 24);
}

double equation_of_time(double g) noexcept {
  return 229.18 * (0.000075 + 0.001868 * std::cos(g) - 0.032077 * std::sin(g) -
                   0.014615 * std::cos(2 * g) - 0.040849 * std::sin(2 * g));
}

double solar_declination(double g) noexcept {
  return 0.006918 - 0.399912 * std::cos(g) + 0.070257 * std::sin(g) - 0.006758 * std::cos(2 * g) +
         0.000907 * std::sin(2 * g);
}

double hour_angle(double latitude_degrees, double declination) noexcept {
  const double latitude = radians(latitude_degrees);
  return arc_cosine(std::cos(radians(kZenith)) / (std::cos(latitude) * std::cos(declination)) -
                    std::tan(latitude) * std::tan(declination));
}

}  // namespace homewarden
