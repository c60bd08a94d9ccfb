// When events run next, and what is said of them.

#include <gmock/gmock.h>

#include "automation/due_time.h"
#include "automation/event_faces.h"
#include "automation/event_words.h"
#include "automation/missed_events.h"
#include "core/dates.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre, ::testing::HasSubstr;

EventRecord event(const std::string& time, const std::string& days, const std::string& freq,
                  const std::string& action = "on", const std::string& dim = "100") {
  return {"Hall Lamp", "B", "12", dim, time, action, freq, days};
}

Minute at(const char* text) {
  return *parse_minute(text);
}

// The sun sets a minute later every day: 22:30 on Wednesday, 21 June 2023.
SunTimes sun_of_test(std::chrono::local_days day) {
  const auto later = std::chrono::minutes((day - std::chrono::local_days(2023y / 6 / 21)).count());
  return {day + 4h + 43min, day + 22h + 30min + later};
}

std::string next(const EventRecord& planned, const char* now) {
  const auto due = next_run(planned, at(now), sun_of_test);
  return due ? text_of(*due) : "never";
}

TEST(NextRun, IsTheMinuteAtWhichTheSchedulerWouldRunIt) {
  const char* const wednesday = "2023-06-21 14:05";
  EXPECT_EQ(next(event("14:06", "w", "daily"), wednesday), "2023-06-21 14:06");
  EXPECT_EQ(next(event("14:05", "w", "daily"), wednesday), "2023-06-28 14:05") << "it is running";
  EXPECT_EQ(next(event("7:5", "MTWUF", "daily"), "2023-06-23 08:00"), "2023-06-26 07:05")
      << "letters that somebody wrote large";
  EXPECT_EQ(next(event("sSet:00", "mtwufsr", "daily"), wednesday), "2023-06-21 22:30");
  EXPECT_EQ(next(event("SSET:-1", "w", "daily"), "2023-06-21 21:30"), "2023-06-28 21:37")
      << "the sun times of its own day";
  EXPECT_EQ(next(event("sSet:+3", "mtwufsr", "daily"), wednesday), "2023-06-22 01:31")
      << "beyond midnight it is a time of day of the day itself";
  EXPECT_EQ(next(event("sRise:-3", "r", "daily"), wednesday), "2023-06-25 01:43");
}

TEST(NextRun, OfAOnceEventIsItsNextTimeOrNone) {
  const char* const wednesday = "2023-06-21 14:05";
  EXPECT_EQ(next(event("10:00", "u", "once"), wednesday), "2023-06-22 10:00");
  const auto gone = event("10:00", "s", "once");
  EXPECT_EQ(next(gone, wednesday), "never") << "on Thursday it is removed";
  EXPECT_THAT(why_not_planned(gone, at(wednesday), sun_of_test), HasSubstr("tomorrow at 10:00"));
  EXPECT_EQ(next(event("10:00", "s", "once"), "2023-06-23 14:05"), "2023-06-24 10:00");
}

TEST(NextRun, IsNoneOfDamagedEventsAndWithoutTheSun) {
  for (const auto& never :
       {event("25:00", "w", "daily"), event("", "w", "daily"), event("15:00", "", "daily"),
        event("15:00", "x", "daily"), event("15:00", "w", "daily", "on", "bright")})
    EXPECT_EQ(next(never, "2023-06-21 14:05"), "never") << never.key();
  const auto no_sun = [](std::chrono::local_days) { return SunTimes(); };
  const Minute now = at("2023-06-21 14:05");
  EXPECT_FALSE(next_run(event("sSet:00", "w", "daily"), now, no_sun));
  EXPECT_THAT(why_not_planned(event("sSet:00", "w", "daily"), now, no_sun), HasSubstr("sun time"));
}

// All kinds of events over a week against the rule of the scheduler, minute by minute: a clock that
// jumps shows other minutes, but the next one that it can show is the same.
TEST(NextRun, AgreesWithEveryMinuteOfAWeek) {
  const Minute begin = at("2023-06-21 00:00");
  for (const char* time : {"00:00", "02:30", "23:59", "sSet:+2", "sRise:-3"})
    for (const char* days : {"mtwufsr", "w", "sr"})
      for (const char* freq : {"daily", "once"}) {
        const auto planned = event(time, days, freq);
        std::optional<Minute> expected;
        bool gone = false;
        for (Minute minute = begin + 7 * 24h; minute > begin; minute -= 1min) {
          const auto sun = sun_of_test(std::chrono::floor<std::chrono::days>(minute));
          const auto due = due_minute(time, sun.sunrise_time, sun.sunset_time);
          if (!due || *due != minute_of_day(minute)) continue;
          const bool runs = runs_on_day({planned, minute});
          gone = freq == std::string("once") && !runs;
          if (runs) expected = minute;
        }
        EXPECT_EQ(next_run(planned, begin, sun_of_test), gone ? std::nullopt : expected)
            << planned.key();
      }
}

TEST(EventWords, SayWhatAnEventDoes) {
  const auto words = [](const EventRecord& told) { return event_in_words(told, "Lamp"); };
  EXPECT_EQ(words(event("06:45", "mtwuf", "daily", "on", "40")),
            "Weekdays at 06:45, Lamp on at 40\xA0%");
  EXPECT_EQ(words(event("sSet:00", "mtwufsr", "daily")), "Every day at sunset, Lamp on");
  EXPECT_EQ(words(event("sRise:+1", "sr", "daily", "off", " ")),
            "Weekend 1 hour after sunrise, Lamp off");
  EXPECT_EQ(words(event("10:00", "s", "once")), "Once, on Saturday at 10:00, Lamp on");
  EXPECT_EQ(words(event("10:00", "mtwufsr", "once")), "Once at 10:00, Lamp on");
  EXPECT_EQ(words(event("10:00", "MW", "daily")), "Mon, Wed at 10:00, Lamp on");
  EXPECT_EQ(words(event("10:00", "", "daily")), "On no day at 10:00, Lamp on");
  EXPECT_EQ(words(event("SSET:-12", "m", "daily", "On")), "Mondays 1 hour before sunset, Lamp off")
      << "not what the scheduler makes of it";
  EXPECT_EQ(words(event("", "m", "daily", "on", "bright")), "Mondays at no time, Lamp on");
  EXPECT_EQ(occasion_in_words(event("sSet:-2", "s", "once")),
            "once, on Saturday, 2 hours before sunset");
}

TEST(EventWords, SayHowFarAwayAMinuteIs) {
  const Minute now = at("2023-06-21 14:05");
  const auto told = [now](const char* when) {
    return day_in_words(at(when), now) + "|" + until_in_words(at(when), now);
  };
  EXPECT_EQ(told("2023-06-21 14:05"), "today|now");
  EXPECT_EQ(told("2023-06-21 15:04"), "today|in 59 min");
  EXPECT_EQ(told("2023-06-21 23:40"), "tonight|in 10 h");
  EXPECT_EQ(told("2023-06-22 00:10"), "tomorrow|tomorrow");
  EXPECT_EQ(until_in_words(at("2023-06-22 00:10"), at("2023-06-21 23:30")), "in 40 min");
  EXPECT_EQ(told("2023-06-27 14:05"), "Tuesday|in 6 days");
  EXPECT_EQ(told("2023-06-28 14:05"), "Wednesday next week|in 7 days") << "taken for today's";
}

TEST(EventFaces, AreInTheOrderThatIsWanted) {
  const Minute now = at("2023-06-21 14:05");
  const auto listed = [now](auto order) {
    std::vector<PlannedEvent> planned;
    for (const auto& [device, room, when] :
         {std::tuple("Lamp", "Hall", "2023-06-22 06:00"), std::tuple("Bell", "Attic", ""),
          std::tuple("lamp", "Attic", "2023-06-21 23:00")}) {
      planned.emplace_back().face.device = device;
      planned.back().room = room;
      if (*when != '\0') planned.back().next = at(when);
    }
    std::vector<std::string> texts;
    for (const EventFace& face : order(std::move(planned), now))
      texts.push_back(face.group + ": " + face.device + " " + face.until);
    return texts;
  };
  EXPECT_THAT(listed(by_next_run),
              ElementsAre("Today: lamp in 9 h", "Tomorrow: Lamp ", "Will not run: Bell "));
  EXPECT_THAT(listed(by_room),
              ElementsAre("Attic: lamp in 9 h", "Attic: Bell ", "Hall: Lamp tomorrow"));
  EXPECT_THAT(listed(by_device),
              ElementsAre("Bell: Bell ", "lamp: lamp in 9 h", "Lamp: Lamp tomorrow"));

  EventFace face;
  face.device = "Porch Light";
  face.detail = "Garden, every day at sunset";
  for (const char* filter : {"", " ", "garden", "GARD porch", "light  sunset"})
    EXPECT_TRUE(lets_through(filter, face)) << filter;
  EXPECT_FALSE(lets_through("garden lamp", face));
}

}  // namespace
}  // namespace homewarden::testing
