#include "sun/sunrise.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "base/text.h"
#include "sun/solar_equations.h"

namespace homewarden {
namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::seconds;

enum class Crossing { kRise = 1, kSet = -1 };

constexpr double kPolarLatitude = 89.8;  // nearer to the poles the equations have no hour angle

double usable_latitude(double latitude) noexcept {
  if (latitude >= -90 && latitude < -kPolarLatitude) return -kPolarLatitude;
  if (latitude > kPolarLatitude && latitude <= 90) return kPolarLatitude;
  return latitude;
}

int day_of_year(Date date) noexcept {
  const std::chrono::year_month_day day{floor<days>(date)};
  const auto new_year = std::chrono::local_days(day.year() / 1 / 1);
  return static_cast<int>((floor<days>(date) - new_year).count()) + 1;
}

// Minutes of universal time after midnight, from the sun's position at the fractional year `g`.
double crossing_at(double g, Crossing crossing, double latitude, double longitude) noexcept {
  const double angle =
      hour_angle(latitude, solar_declination(g)) * static_cast<double>(static_cast<int>(crossing));
  return 720 + 4 * (longitude - degrees(angle)) - equation_of_time(g);
}

// A first estimate from the position at the start of `first_day`, then one from the position at the
// hour that it gave.
double crossing_time(int day, int first_day, Crossing crossing, double latitude,
                     double longitude) noexcept {
  const double estimate = crossing_at(fractional_year(first_day, 0), crossing, latitude, longitude);
  const double hour = std::nearbyint(estimate / 60);
  return crossing_at(fractional_year(day, hour), crossing, latitude, longitude);
}

Date time_of(Date day, double minutes) noexcept {
  // Beyond this no date could be computed with; a place on the earth stays far within.
  constexpr double kFurthest = 1e6;
  const auto midnight = floor<days>(day);
  if (!(std::abs(minutes) < kFurthest)) return midnight;
  return midnight + seconds(static_cast<long>(std::nearbyint(minutes * 60)));
}

const City* row(double number) {
  if (!(number > -1 && number < static_cast<double>(kCityCount))) return nullptr;
  const long whole = round_to_even(number);
  if (whole < 0 || whole >= clsSunrise::CityCount()) return nullptr;
  return &city_table()[static_cast<std::size_t>(whole)];
}

}  // namespace

std::string clsSunrise::CityName(long nCity) {
  if (nCity < 0 || nCity >= CityCount()) return "(Error)";
  return std::string(city_table()[static_cast<std::size_t>(nCity)].name);
}

void clsSunrise::City(std::string_view name) {
  const auto& table = city_table();
  const auto found = std::find_if(table.begin(), table.end(), [name](const auto& city) {
    return equals_ignoring_case(trim_blanks(city.name), trim_blanks(name));
  });
  take(found == table.end() ? nullptr : &*found);
}

void clsSunrise::City(double number) {
  take(row(number));
}

void clsSunrise::take(const homewarden::City* city) {
  longitude_ = city ? city->longitude : 0;
  latitude_ = city ? city->latitude : 0;
  time_zone_ = city ? city->time_zone : 0;
  day_savings_ = false;
}

void clsSunrise::CalculateSun(long time_zone) noexcept {
  const double local = (day_savings_ ? 60.0 : 0.0) - static_cast<double>(time_zone) * 60;
  const double latitude = usable_latitude(latitude_);
  const int day = day_of_year(date_);

  const double rise = crossing_time(day, day, Crossing::kRise, latitude, longitude_);
  const double set = crossing_time(day, day + 1, Crossing::kSet, latitude, longitude_);
  const double noon_hour = std::nearbyint(12 + longitude_ / 15);
  const double noon = 720 + 4 * longitude_ - equation_of_time(fractional_year(day, noon_hour));

  sunrise_ = time_of(date_, rise + local);
  noon_ = time_of(date_, noon + local);
  sunset_ = time_of(date_, set + local);
}

}  // namespace homewarden
