#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "base/date.h"
#include "sun/city_table.h"

namespace homewarden {

// Computes the local times of sunrise, solar noon and sunset of one place on one day.
class clsSunrise {
 public:
  // `now` is the day to compute until DateDay is set.
  explicit clsSunrise(Date now) : date_(now) {}

  // The last computed times; the origin of dates before the first CalculateSun. A result may fall
  // on the day before or after the day computed. On a day without sunrise and sunset both fall near
  // the solar noon.
  Date sunrise() const { return sunrise_; }
  Date SolarNoon() const { return noon_; }
  Date sunset() const { return sunset_; }

  // Rows of the table, numbered from 0.
  static long CityCount() { return static_cast<long>(kCityCount); }
  // The name of a row of the table, counted from 0; "(Error)" for any other number.
  static std::string CityName(long nCity);

  // Takes the place from the table by its name, blanks around it and letter case ignored, or by its
  // number, rounded to a whole one with halves to the even. A row that is not there sets the
  // position to 0, and so does a value that is neither. Daylight saving is cleared either way.
  void City(std::string_view name);
  void City(double row);
  void City(std::monostate) { take(nullptr); }

  // The position is 0, 0 and daylight saving off until they are set; degrees are positive to the
  // north and to the west. Nothing is computed or checked before CalculateSun. A latitude within
  // 0.2 degrees of a pole is taken as 89.8.
  long TimeZone() const { return time_zone_; }
  void TimeZone(long hours_west) { time_zone_ = hours_west; }
  bool DaySavings() const { return day_savings_; }
  void DaySavings(bool on) { day_savings_ = on; }
  double Longitude() const { return longitude_; }
  void Longitude(double degrees_west) { longitude_ = degrees_west; }
  double Latitude() const { return latitude_; }
  void Latitude(double degrees_north) { latitude_ = degrees_north; }
  Date DateDay() const { return date_; }
  void DateDay(Date day) { date_ = day; }

  // The time zone, in whole hours west of Greenwich, is the one used; the TimeZone property is not.
  // Daylight saving adds an hour. A place that is none (not a number, beyond the range of dates)
  // gives midnight of the day.
  void CalculateSun(long time_zone) noexcept;

 private:
  void take(const homewarden::City* city);

  long time_zone_ = 0;
  bool day_savings_ = false;
  double longitude_ = 0;
  double latitude_ = 0;
  Date date_;
  Date sunrise_{};
  Date noon_{};
  Date sunset_{};
};

}  // namespace homewarden
