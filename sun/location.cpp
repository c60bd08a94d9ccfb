#include "sun/location.h"

#include <charconv>
#include <cmath>
#include <system_error>
#include <utility>
#include <vector>

#include "base/text.h"
#include "core/dates.h"
#include "platform/waiting.h"
#include "sun/sunrise.h"

namespace homewarden {
namespace {

const char* const kDefaultCity = "London, England, 51.3, 0.1, 0";
constexpr double kFurthestZone = 14;

std::optional<double> number_in(std::string_view piece, double furthest) {
  const std::string all = without_blanks(piece);
  std::string_view digits = all;
  // One sign; from_chars reads a minus only.
  if (digits.starts_with('+') && !digits.starts_with("+-")) digits.remove_prefix(1);
  const char* const end = digits.data() + digits.size();
  double number = 0;
  const auto result = std::from_chars(digits.data(), end, number, std::chars_format::fixed);
  if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
  if (!(std::abs(number) <= furthest)) return std::nullopt;
  return number;
}

}  // namespace

Location::Location(OptionsPanel& panel, StatusBar& status, SunTimes& sun, const Flags& flags,
                   Operations& operations, EventLoop& loop, Settings& settings)
    : panel_(panel), status_(status), sun_(sun), flags_(flags), loop_(loop), settings_(settings) {
  panel.com_city.click.connect([this, &operations] {
    if (!flags_.formloading) operations.start(city_chosen());
  });
  panel.Check1.click.connect([this] {
    if (!flags_.formloading) daylight_saving_clicked();
  });
}

void Location::dosunset() {
  panel_.com_city.text = settings_.read("data", "city", kDefaultCity);
  compute(panel_.com_city.text);
}

Task<void> Location::city_chosen() {
  const std::string city = panel_.com_city.text;
  settings_.write("data", "city", city);
  co_await pending_events(loop_);
  compute(city);
}

void Location::daylight_saving_clicked() {
  settings_.write("data", "dst", panel_.Check1.checked ? "1" : "0");
  dosunset();
}

void Location::compute(const std::string& city) {
  fill_city_list(panel_.com_city);
  const auto place = parse_city_text(city);
  if (!place) {
    status_.panel2 = "The city \"" + city + "\" cannot be read, " +
                     (sun_.sunrise_time ? "the sun times stay as they were"
                                        : "events at sunrise and sunset wait until you choose one");
    return;
  }
  using std::chrono::days;
  using std::chrono::floor;
  using std::chrono::minutes;
  place_ = place;
  const SunTimes today = sun_times(floor<days>(date_of(loop_.local_time())));
  sun_.sunrise_time = today.sunrise_time;
  sun_.sunset_time = today.sunset_time;
  panel_.lab_sunset.caption =
      "Todays Sunrise time is:" + hh_mm(floor<minutes>(*today.sunrise_time)) +
      " Todays Sunset time is:" + hh_mm(floor<minutes>(*today.sunset_time));
}

SunTimes Location::sun_times(std::chrono::local_days day) const {
  if (!place_) return {};
  clsSunrise sun{Date(day)};
  sun.Latitude(place_->latitude);
  sun.Longitude(place_->longitude);
  sun.DaySavings(panel_.Check1.checked);
  sun.CalculateSun(place_->time_zone);
  return {sun.sunrise(), sun.sunset()};
}

std::optional<Place> parse_city_text(std::string_view text) {
  std::vector<std::string_view> pieces;
  for (;;) {
    const auto comma = text.find(',');
    pieces.push_back(text.substr(0, comma));
    if (comma == std::string_view::npos) break;
    text.remove_prefix(comma + 1);
  }
  // One city of the list has no comma in its name.
  const std::size_t first = pieces.size() == 4 ? 1 : 2;
  if (pieces.size() != first + 3) return std::nullopt;
  const auto latitude = number_in(pieces[first], 90);
  const auto longitude = number_in(pieces[first + 1], 180);
  const auto zone = number_in(pieces[first + 2], kFurthestZone);
  if (!latitude || !longitude || !zone) return std::nullopt;
  return Place{*latitude, *longitude, round_to_even(*zone)};
}

void fill_city_list(ComboBox& list) {
  auto items = list.items.get();
  if (items.size() >= kCityCount) return;
  for (const City& city : city_table()) {
    if (items.size() >= kCityCount) break;
    items.push_back(city_entry(city));
  }
  list.items = std::move(items);
}

}  // namespace homewarden
