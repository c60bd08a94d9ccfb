#include "core/house/home_times.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <tuple>
#include <utility>

#include "automation/due_time.h"
#include "automation/event_list.h"
#include "automation/event_words.h"
#include "automation/next_run.h"
#include "core/dates.h"
#include "platform/waiting.h"

namespace homewarden {
namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::hours;
using std::chrono::minutes;

constexpr std::size_t kShown = 4;
constexpr std::size_t kCells = 8;
constexpr std::array<std::string_view, 7> kDays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                   "Thursday", "Friday", "Saturday"};
constexpr std::array<std::string_view, 12> kMonths = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};

std::string date_in_words(std::chrono::local_days day) {
  const std::chrono::year_month_day date(day);
  const unsigned month = static_cast<unsigned>(date.month());
  return std::string(kDays[std::chrono::weekday(day).c_encoding()]) + " " +
         std::to_string(static_cast<unsigned>(date.day())) + " " + std::string(kMonths[month - 1]);
}

std::optional<int> minute_in(std::optional<Date> time) {
  if (!time) return std::nullopt;
  return minute_of_day(floor<minutes>(*time));
}

// "At sunset, in 22 min", "1 hour after sunrise, tomorrow", "Tonight".
std::string when_in_words(const EventRecord& event, Minute due, Minute now) {
  std::string when = due - now < hours(1) ? until_in_words(due, now) : day_in_words(due, now);
  if (sun_of(event.time) == Sun::kNone) return capitalised(std::move(when));
  const std::string time = time_in_words(event.time);
  return capitalised((time.find(' ') == std::string::npos ? "at " : "") + time) + ", " + when;
}

}  // namespace

HomeTimes::HomeTimes(HomePanel& home, OptionsPanel& options, EventPanel& events,
                     ProgramTimers& timers, Operations& operations, EventLoop& loop,
                     HouseIndex& house, const Location& location)
    : home_(home),
      options_(options),
      events_(events),
      operations_(operations),
      loop_(loop),
      house_(house),
      location_(location) {
  events.ListView1.rows.changed.connect([this] { find_soon(); });
  events.ListView1.marks.changed.connect([this] { find_soon(); });
  house.changed.connect([this] { find_soon(); });
  options.lab_sunset.caption.changed.connect([this] {
    suns_.clear();
    find_soon();
  });
  timers.timetimer.tick.connect([this] { minute_begins(); });
}

void HomeTimes::find_soon() {
  if (std::exchange(is_due_, true)) return;
  operations_.start(find_later());
}

Task<void> HomeTimes::find_later() {
  co_await pending_events(loop_);
  is_due_ = false;
  find();
}

void HomeTimes::find() {
  const Minute now = minute_of(loop_.local_time());
  const auto& rows = events_.ListView1.rows.get();
  const auto& marks = events_.ListView1.marks.get();
  coming_.clear();
  for (std::size_t row = 0; row < rows.size(); ++row) {
    if (rows[row].size() < kCells || marks.contains(static_cast<int>(row))) continue;
    EventRecord event = event_in(rows[row]);
    const auto due =
        next_run(event, now, [this](std::chrono::local_days day) { return sun_times(day); });
    if (due) coming_.push_back({*due, std::move(event)});
  }
  const auto last = coming_.begin() + static_cast<std::ptrdiff_t>(std::min(kShown, coming_.size()));
  std::partial_sort(coming_.begin(), last, coming_.end(), [](const Coming& a, const Coming& b) {
    return std::tie(a.due, a.event.roomdevice) < std::tie(b.due, b.event.roomdevice);
  });
  coming_.erase(last, coming_.end());
  show_day(now);
  show_events(now);
}

// Each second; the clock may also have been set back.
void HomeTimes::minute_begins() {
  const Minute now = minute_of(loop_.local_time());
  if (now == shown_) return;
  const bool another_day = floor<days>(now) != floor<days>(shown_);
  const bool one_ran = !coming_.empty() && coming_.front().due <= now;
  if (another_day) suns_.clear();
  if (another_day || one_ran || now < shown_) {
    find();
    return;
  }
  show_day(now);
  show_events(now);
}

void HomeTimes::show_day(Minute now) {
  shown_ = now;
  const auto today = floor<days>(now);
  const SunTimes sun = sun_times(today);
  const int minute = minute_of_day(now);
  options_.sunrise = minute_in(sun.sunrise_time);
  options_.sunset = minute_in(sun.sunset_time);
  options_.minute = minute;
  std::string words = date_in_words(today);
  if (const auto rise = options_.sunrise.get(); rise && minute < *rise)
    words += ", sunrise at " + hh_mm(*rise);
  else if (const auto set = options_.sunset.get())
    words += minute <= *set ? ", sunset at " + hh_mm(*set) : ", sunset was at " + hh_mm(*set);
  home_.lab_today.caption = std::move(words);
}

void HomeTimes::show_events(Minute now) {
  std::vector<ComingEvent> events;
  for (const auto& [due, event] : coming_)
    events.push_back({clock_in_words(due), event.action == "on",
                      device_name(event) + " " + action_in_words(event),
                      when_in_words(event, due, now)});
  home_.lab_nocoming.visible = events.empty();
  home_.coming = std::move(events);
}

SunTimes HomeTimes::sun_times(std::chrono::local_days day) {
  const auto known = suns_.find(day);
  if (known != suns_.end()) return known->second;
  return suns_[day] = location_.sun_times(day);
}

// With its room where another room has a device of this name.
std::string HomeTimes::device_name(const EventRecord& event) const {
  const Device* device = house_.by_room_and_name(event.roomdevice);
  if (!device) return event.roomdevice;
  const auto same =
      std::count_if(house_.devices().begin(), house_.devices().end(),
                    [device](const Device& other) { return other.name == device->name; });
  return same > 1 ? event.roomdevice : device->name;
}

}  // namespace homewarden
