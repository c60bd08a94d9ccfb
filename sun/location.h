#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "base/operations.h"
#include "base/task.h"
#include "core/settings.h"
#include "platform/event_loop.h"
#include "ui/home_panel.h"
#include "ui/shared_state.h"

namespace homewarden {

struct Place {
  double latitude = 0;
  double longitude = 0;  // positive to the west
  long time_zone = 0;    // hours west of Greenwich
};

// Where the house is, and the sun times of the day there.
class Location {
 public:
  Location(OptionsPanel& panel, StatusBar& status, SunTimes& sun, const Flags& flags,
           Operations& operations, EventLoop& loop, Settings& settings);

  // Computes and shows today's sun times for the stored city. A city text that cannot be read
  // keeps the times there are and is told in the status line.
  void dosunset();

  // The sun times of any day, with the daylight saving of today; nothing in them before a city
  // could be read.
  SunTimes sun_times(std::chrono::local_days day) const;

 private:
  Task<void> city_chosen();
  void daylight_saving_clicked();
  void compute(const std::string& city);

  OptionsPanel& panel_;
  StatusBar& status_;
  SunTimes& sun_;
  const Flags& flags_;
  EventLoop& loop_;
  Settings& settings_;
  std::optional<Place> place_;  // the last one that could be read
};

// Reads an entry of the city list, or a text of the same form: a name with one comma or none, then
// latitude, longitude and time zone. Nothing when a number is missing or is no place on the earth.
std::optional<Place> parse_city_text(std::string_view text);

// Appends the cities of the table, from the first on, until the list has as many entries as there
// are cities. A list that is full stays as it is.
void fill_city_list(ComboBox& list);

}  // namespace homewarden
