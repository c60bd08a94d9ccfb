// The sun calculator's worked figures and the location settings.

#include "sun/sunrise.h"

#include <gmock/gmock.h>

#include <limits>

#include "core/dates.h"
#include "core/time_text.h"
#include "sun/location.h"
#include "tests/platform/memory_registry.h"
#include "tests/platform/virtual_loop.h"
#include "ui/frm_main.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;

Date day(int year, int month, int day_of_month, int hour = 13) {
  return date_of(LocalTime{year, month, day_of_month, hour});
}

// "05:59:03", with the day's distance from the one computed when it is another.
std::string time_text(Date time, Date computed) {
  const auto midnight = std::chrono::floor<std::chrono::days>(time);
  const auto away = (midnight - std::chrono::floor<std::chrono::days>(computed)).count();
  const auto seconds = static_cast<int>((time - midnight).count());
  return (away == 0 ? "" : std::to_string(away) + "d ") + hh_mm(seconds / 60) + ":" +
         two_digits(seconds % 60);
}

std::string times(const clsSunrise& sun) {
  return time_text(sun.sunrise(), sun.DateDay()) + " " + time_text(sun.SolarNoon(), sun.DateDay()) +
         " " + time_text(sun.sunset(), sun.DateDay());
}

TEST(Sunrise, WorkedFigures) {
  clsSunrise sun(day(2023, 3, 21));
  EXPECT_EQ(sun.sunrise(), Date());
  sun.City(34);
  sun.CalculateSun(5);
  EXPECT_EQ(times(sun), "05:59:03 12:03:41 18:09:00");
  EXPECT_EQ(sun.TimeZone(), 5);

  sun.DateDay(day(2023, 6, 21));
  sun.Latitude(51.3);
  sun.Longitude(0.1);
  sun.CalculateSun(0);
  EXPECT_THAT(times(sun), ::testing::StartsWith("03:44:54"));
  EXPECT_THAT(times(sun), ::testing::EndsWith("20:18:47"));
  sun.DaySavings(true);
  sun.CalculateSun(0);
  EXPECT_THAT(times(sun), ::testing::StartsWith("04:44:54"));
  EXPECT_THAT(times(sun), ::testing::EndsWith("21:18:47"));

  sun.DaySavings(false);
  sun.Latitude(75);
  sun.Longitude(0);
  sun.CalculateSun(0);
  EXPECT_EQ(times(sun), "12:01:26 12:01:26 12:01:26");
  sun.CalculateSun(13);
  EXPECT_EQ(times(sun), "-1d 23:01:26 -1d 23:01:26 -1d 23:01:26");
}

TEST(Sunrise, WorkedFiguresOfOddDays) {
  const auto times_in = [](const char* city, Date date, int time_zone = 0) {
    clsSunrise sun(date);
    sun.City(city);
    sun.CalculateSun(time_zone);
    return times(sun);
  };
  // A day number that is one off after February moves these by up to two minutes.
  const char* const london = "London, England";
  EXPECT_EQ(times_in(london, day(2023, 3, 1)), "06:47:12 12:12:18 17:38:17");
  EXPECT_EQ(times_in(london, day(2024, 3, 1)), "06:45:02 12:12:07 17:40:05");
  EXPECT_EQ(times_in(london, day(2024, 12, 31)), "08:03:57 12:02:36 16:01:26");
  // The hour of a sunset is estimated from the start of the next day: on some days, such as this,
  // the hour is another than this day's start would give.
  const char* const anchorage = "Anchorage, AK";
  EXPECT_THAT(times_in(anchorage, day(2023, 9, 13), 9), ::testing::EndsWith("19:27:59"));
  // Far from Greenwich a day of universal time holds the sunrise or sunset of another date.
  EXPECT_EQ(times_in(anchorage, day(2023, 6, 21)), "12:22:00 21:59:41 1d 07:37:23");
  EXPECT_EQ(times_in("Sydney, Australia", day(2023, 6, 21)), "-1d 20:58:29 01:56:50 06:55:10");
}

TEST(Sunrise, NearThePolesAndBeyondTheEarth) {
  clsSunrise sun(day(2024, 12, 31));
  sun.Latitude(90);
  sun.CalculateSun(0);
  const std::string at_pole = times(sun);
  EXPECT_EQ(sun.Latitude(), 90) << "the stored latitude changed";
  sun.Latitude(89.8);
  sun.CalculateSun(0);
  EXPECT_EQ(times(sun), at_pole);
  const double infinite = std::numeric_limits<double>::infinity();
  for (const double odd : {91.0, 1e300, infinite, std::numeric_limits<double>::quiet_NaN()}) {
    sun.Latitude(odd);
    sun.Longitude(odd == 91 ? 0 : odd);
    sun.CalculateSun(0);
    EXPECT_LT(sun.sunset() - day(2024, 12, 31, 0), 25h) << odd;
  }
}

TEST(Sunrise, FindsCitiesByNameAndNumber) {
  clsSunrise sun(day(2023, 6, 21));
  EXPECT_EQ(clsSunrise::CityCount(), 62);
  EXPECT_EQ(clsSunrise::CityName(50), "London, England");
  EXPECT_EQ(clsSunrise::CityName(62) + clsSunrise::CityName(-1), "(Error)(Error)");
  sun.DaySavings(true);
  sun.City("  LONDON, ENGLAND ");
  EXPECT_EQ(sun.Latitude(), 51.51);
  EXPECT_EQ(sun.Longitude(), -0.13);
  EXPECT_FALSE(sun.DaySavings());
  sun.City(33.5);
  EXPECT_EQ(sun.Latitude(), 40.43) << "halves go to the even row";
  sun.City(53);
  EXPECT_EQ(sun.TimeZone(), -6);
  for (const double none : {62.0, -1.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
    sun.City(50);
    sun.City(none);
    EXPECT_EQ(sun.Latitude(), 0) << none;
  }
  sun.City("50");
  EXPECT_EQ(sun.Latitude(), 0) << "a text is a name";
  sun.City(50);
  sun.DaySavings(true);
  sun.City(std::monostate());
  EXPECT_EQ(sun.Latitude(), 0) << "neither text nor number";
  EXPECT_FALSE(sun.DaySavings());
}

TEST(CityText, EveryEntryOfTheListCanBeRead) {
  for (const City& city : city_table()) {
    const auto place = parse_city_text(city_entry(city));
    ASSERT_TRUE(place) << city_entry(city);
    EXPECT_EQ(place->latitude, city.latitude);
    EXPECT_EQ(place->longitude, city.longitude);
    EXPECT_EQ(place->time_zone, city.time_zone);
  }
  EXPECT_EQ(city_entry(city_table()[50]), "London, England, 51.51, -0.13, 0");
  EXPECT_TRUE(parse_city_text("A, B, + 5 1.3 , -0.1, -6"));
  EXPECT_EQ(parse_city_text("A, B, 51, 0, -5.5")->time_zone, -6) << "halves go to the even hour";
  EXPECT_EQ(parse_city_text("A, B, 51, 0, 4.5")->time_zone, 4) << "halves go to the even hour";
  for (const char* text :
       {"", "London", "London, England, 51.3, 0.1", "A, B, 51.3, 0.1, 0, 0", "A, B, x, 0.1, 0",
        "A, B, 91, 0.1, 0", "A, B, 51, 181, 0", "A, B, 51, 0, 15", "A, B, nan, 0, 0",
        "A, B, 1e400, 0, 0", "A, B, , , ", "A, B, +-51, 0, 0", "A, B, ++51, 0, 0", "A, B, +, 0, 0"})
    EXPECT_FALSE(parse_city_text(text)) << text;
}

class LocationTest : public ::testing::Test {
 protected:
  void choose(const std::string& city) {
    form.com_city.text = city;
    form.com_city.click();
    loop.run_pending();
  }
  std::string stored(const std::string& key) { return settings.read("data", key, "(none)"); }

  VirtualLoop loop;
  MemoryRegistry registry;
  Settings settings{registry};
  FrmMain form;
  Operations operations{[](std::exception_ptr) { FAIL(); }};
  Location location{form, form.Statusbar, form, form, operations, loop, settings};
};

TEST_F(LocationTest, ShowsTheSunTimesOfTheStoredCity) {
  location.dosunset();
  EXPECT_EQ(form.lab_sunset.caption.get(),
            "Todays Sunrise time is:03:44 Todays Sunset time is:20:18");
  EXPECT_EQ(form.com_city.items.get().size(), 62u);
  form.Check1.checked = true;
  EXPECT_EQ(form.lab_sunset.caption.get(),
            "Todays Sunrise time is:04:44 Todays Sunset time is:21:18");
  EXPECT_EQ(stored("dst"), "1");
  form.Check1.checked = false;
  EXPECT_EQ(stored("dst"), "0");
  choose("New York City, NY, 40.43, 74.01, 5");
  EXPECT_EQ(stored("city"), "New York City, NY, 40.43, 74.01, 5");
  EXPECT_THAT(form.lab_sunset.caption.get(), HasSubstr("Sunrise time is:04:2"));
  location.dosunset();
  EXPECT_EQ(form.com_city.items.get().size(), 62u) << "the list grew";
}

TEST_F(LocationTest, ACityThatCannotBeReadKeepsTheTimesAndIsTold) {
  choose("Nowhere");
  EXPECT_FALSE(form.sunset_time);
  EXPECT_EQ(form.Statusbar.panel2.get(),
            "The city \"Nowhere\" cannot be read, events at sunrise and sunset wait until you "
            "choose one");
  choose("London, England, 51.51, -0.13, 0");
  const auto sunset = form.sunset_time;
  const std::string shown = form.lab_sunset.caption;
  choose("Nowhere, At, All, 0, 0");
  EXPECT_EQ(form.sunset_time, sunset);
  EXPECT_EQ(form.lab_sunset.caption.get(), shown);
  EXPECT_THAT(form.Statusbar.panel2.get(), HasSubstr("the sun times stay as they were"));
}

TEST_F(LocationTest, StoresTheCityBeforeItWaitsAndComputesAfter) {
  form.com_city.text = "London, England, 51.51, -0.13, 0";
  form.com_city.click();
  EXPECT_EQ(stored("city"), "London, England, 51.51, -0.13, 0");
  EXPECT_FALSE(form.sunset_time) << "what was pending had no chance to go first";
  form.com_city.text = "Nowhere";
  loop.run_pending();
  EXPECT_TRUE(form.sunset_time) << "the text computed is not the one that was chosen";
}

TEST_F(LocationTest, IsSilentWhileTheProgramStarts) {
  form.formloading = true;
  choose("London, England, 51.51, -0.13, 0");
  form.Check1.checked = true;
  EXPECT_EQ(stored("city") + stored("dst"), "(none)(none)");
  EXPECT_FALSE(form.sunset_time);
}

}  // namespace
}  // namespace homewarden::testing
