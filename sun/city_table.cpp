#include "sun/city_table.h"

#include <charconv>
#include <iterator>

namespace homewarden {
namespace {

constexpr std::array<City, kCityCount> kCities = {{
    {"Bridlington, England", 54.08, -0.19, 0},
    {"Norwich, England", 52.62, 1.29, 0},
    {"Ipswich, England", 52.06, 1.14, 0},
    {"Bristol, England", 51.45, -2.59, 0},
    {"Peterborough, England", 52.57, -0.25, 0},
    {"Brighton, England", 50.83, -0.13, 0},
    {"York, England", 53.95, -1.08, 0},
    {"Middlesborough, England", 54.57, -1.24, 0},
    {"Huddersfield, England", 53.65, -1.78, 0},
    {"Manchester, England", 53.48, -2.25, 0},
    {"Leeds, England", 53.79, -1.55, 0},
    {"Birmingham, England", 52.48, -1.91, 0},
    {"Plymouth, England", 50.37, -4.18, 0},
    {"Cardiff, Wales", 51.48, -3.18, 0},
    {"Llandudno, Wales", 53.32, -3.82, 0},
    {"Inverness, Scotland", 57.48, -4.24, 0},
    {"Glasgow, Scotland", 55.86, -4.24, 0},
    {"Blackpool, England", 53.81, -3.05, 0},
    {"Albuquerque, NM", 35.05, 106.39, 7},
    {"Anchorage, AK", 61.13, 149.54, 9},
    {"Atlanta, GA", 33.44, 84.23, 5},
    {"Boston, MA", 42.21, 71.03, 5},
    {"Boulder, CO", 40.125, 105.237, 7},
    {"Chicago, IL", 41.51, 87.39, 6},
    {"Dallas, TX", 32.46, 96.47, 6},
    {"Denver, CO", 39.44, 104.59, 7},
    {"Detroit, MI", 42.2, 83.03, 5},
    {"Honolulu, HA", 21.18, 157.51, 10},
    {"Indianapolis, IN", 39.46, 86.09, 5},
    {"Kansas City, MO", 39.05, 94.34, 6},
    {"Los Angeles, CA", 34.03, 118.14, 8},
    {"Miami, FL", 25.46, 80.11, 5},
    {"Minneapolis, nMonth", 44.58, 93.15, 6},
    {"New Orleans, LA", 29.57, 90.04, 6},
    {"New York City, NY", 40.43, 74.01, 5},
    {"Oklahoma City, OK", 35.28, 97.3, 6},
    {"Philadelphia, PA", 39.57, 75.09, 5},
    {"Phoenix, AZ", 33.26, 112.04, 7},
    {"Saint Louis, MO", 38.37, 90.11, 6},
    {"San Fransisco, CA", 37.46, 122.25, 8},
    {"Seattle, WA", 47.36, 122.19, 8},
    {"Washington DC", 38.53, 77.02, 5},
    {"Beijing, China", 39.55, -116.25, -8},
    {"Berlin, Germany", 52.33, -13.3, -1},
    {"Buenos Aires, Argentina", -34.36, 58.27, 3},
    {"Cairo, Egypt", -30.06, -31.22, -2},
    {"Cape Town, South Africa", -33.55, -18.22, -2},
    {"Caracas, Venezula", 10.3, 66.56, 4},
    {"Helsinki, Finland", 60.1, -24.58, -2},
    {"Hong Kong, China", 22.15, -114.1, -8},
    {"London, England", 51.51, -0.13, 0},
    {"Mexico City, Mexico", 19.24, 99.09, 6},
    {"Moscow, Russia", 55.45, -37.35, -3},
    {"New Delhi, India", 28.36, -77.12, -6},
    {"Ottawa, Canada", 45.25, 75.42, 5},
    {"Paris, France", 48.52, -2.2, -1},
    {"Rio de Janeiro, Brazil", -22.54, 43.14, 3},
    {"Riyadh, Saudi Arabia", 24.38, -46.43, -3},
    {"Rome, Italy", 41.54, -12.29, -1},
    {"Sydney, Australia", -33.52, -151.13, -10},
    {"Tokyo, Japan", 35.42, -139.46, -9},
    {"Zurich, Switzerland", 47.23, -8.32, -1},
}};

std::string shortest(double number) {
  char digits[32];
  const auto end = std::to_chars(std::begin(digits), std::end(digits), number);
  return std::string(std::begin(digits), end.ptr);
}

}  // namespace

const std::array<City, kCityCount>& city_table() {
  return kCities;
}

std::string city_entry(const City& city) {
  return std::string(city.name) + ", " + shortest(city.latitude) + ", " + shortest(city.longitude) +
         ", " + std::to_string(city.time_zone);
}

}  // namespace homewarden
