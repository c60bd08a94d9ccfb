#pragma once

#include <map>
#include <string>
#include <vector>

#include "automation/event_record.h"
#include "base/date.h"
#include "base/operations.h"
#include "base/task.h"
#include "core/house_index.h"
#include "platform/event_loop.h"
#include "sun/location.h"
#include "ui/event_panel.h"
#include "ui/home_panel.h"
#include "ui/shared_state.h"

namespace homewarden {

// The day and the next events in words on the home page, and the day's course for the settings
// page. Kept true by the event list, the house, the place of the house and the clock.
class HomeTimes {
 public:
  HomeTimes(HomePanel& home, OptionsPanel& options, EventPanel& events, ProgramTimers& timers,
            Operations& operations, EventLoop& loop, HouseIndex& house, const Location& location);

 private:
  struct Coming {
    Minute due;
    EventRecord event;
  };

  void find_soon();
  Task<void> find_later();
  void find();
  void minute_begins();
  void show_day(Minute now);
  void show_events(Minute now);
  SunTimes sun_times(std::chrono::local_days day);
  std::string device_name(const EventRecord& event) const;

  HomePanel& home_;
  OptionsPanel& options_;
  EventPanel& events_;
  Operations& operations_;
  EventLoop& loop_;
  HouseIndex& house_;
  const Location& location_;
  std::map<std::chrono::local_days, SunTimes> suns_;  // of the days that were asked for
  std::vector<Coming> coming_;                        // the next ones, by their time
  Minute shown_{};
  bool is_due_ = false;  // the events are to be looked through
};

}  // namespace homewarden
