#pragma once

namespace homewarden {

// The low-accuracy solar equations that the NOAA Global Monitoring Laboratory publishes as "General
// Solar Position Calculations", after J. W. Spencer, Fourier series representation of the position
// of the sun (1971), with two differences: the year's angle counts hours from midnight, not from
// noon, and the declination leaves out the terms in three times that angle, together up to 0.18
// degrees. Angles in radians unless said otherwise.

// pi as the times are defined with.
inline constexpr double kPi = 3.1415926535;

double degrees(double radians) noexcept;
double radians(double degrees) noexcept;

// The angle of the year at an hour of a day; 1 January is day 1. Every year has 365 days here, so
// that 31 December of a leap year is beyond the full circle.
double fractional_year(int day_of_year, double hour) noexcept;

// What a sundial is ahead of a clock, in minutes, -15 to 17; the argument is fractional_year().
double equation_of_time(double fractional_year) noexcept;

// How far north of the equator the sun stands, up to 0.41 (23.5 degrees); south of it is below 0.
double solar_declination(double fractional_year) noexcept;

// The angle between noon and the moment at which the upper edge of the sun, lifted by refraction,
// touches the horizon (a zenith of 90.833 degrees). 0 where it does not.
double hour_angle(double latitude_degrees, double declination) noexcept;

}  // namespace homewarden
