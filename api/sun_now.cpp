#include "api/sun_now.h"

#include <chrono>
#include <optional>
#include <string>

#include "base/code_page.h"
#include "base/text.h"
#include "core/dates.h"

namespace homewarden {
namespace {

Json time_of(const std::optional<Date>& moment) {
  return moment ? Json(hh_mm(std::chrono::floor<std::chrono::minutes>(*moment))) : Json();
}

}  // namespace

Json sun_now(const Location& location, const OptionsPanel& panel, const Clock& clock) {
  const auto today = std::chrono::floor<std::chrono::days>(date_of(clock.local_time()));
  const SunTimes sun = location.sun_times(today);
  const std::string city = panel.com_city.text;
  const std::string place(trim_blanks(std::string_view(city).substr(0, city.find(','))));
  return Json::Object{
      {"date", text_of(today)},
      {"sunrise", time_of(sun.sunrise_time)},
      {"sunset", time_of(sun.sunset_time)},
      {"place", sun.sunrise_time && !place.empty() ? Json(to_utf8(place)) : Json()}};
}

}  // namespace homewarden
