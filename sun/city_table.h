#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace homewarden {

struct City {
  std::string_view name;
  double latitude = 0;   // degrees, positive to the north
  double longitude = 0;  // degrees, positive to the west of Greenwich
  int time_zone = 0;     // whole hours west of Greenwich: local time = universal time - time zone
};

inline constexpr std::size_t kCityCount = 62;

// The cities that are offered, in the order in which they are numbered.
const std::array<City, kCityCount>& city_table();

// "London, England, 51.51, -0.13, 0": name, latitude, longitude, time zone. parse_city_text() reads
// it back.
std::string city_entry(const City& city);

}  // namespace homewarden
