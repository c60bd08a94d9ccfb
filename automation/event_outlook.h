#pragma once

#include <functional>
#include <string>

#include "automation/event_faces.h"
#include "automation/next_run.h"
#include "core/house_index.h"
#include "platform/clock.h"
#include "ui/event_panel.h"

namespace homewarden {

// Puts the event list into sentences, filtered and in order, and the editor's boxes into the one
// that they make. Works while the panel shows, then once a minute and after every change.
class EventOutlook {
 public:
  using ProfileName = std::function<std::string()>;

  EventOutlook(EventPanel& panel, HouseIndex& house, const Clock& clock, SunTimesOf sun_times,
               ProfileName profile);

  // Anew: the place of the house, the daylight saving or the profile is another.
  void refresh();

 private:
  void follow_controls();
  void show_list();
  void order();
  void show_sentence();
  std::string count_text() const;

  EventPanel& panel_;
  HouseIndex& house_;
  const Clock& clock_;
  SunTimesOf sun_times_;
  SunTimesOf known_sun_;  // of the days that have been asked for
  ProfileName profile_;
  std::vector<PlannedEvent> planned_;
};

}  // namespace homewarden
