#pragma once

#include <string>

#include "automation/next_run.h"
#include "automation/profile_switch.h"
#include "core/house_index.h"
#include "platform/clock.h"
#include "ui/event_panel.h"
#include "ui/settings_panels.h"

namespace homewarden {

// What each profile holds and what one would do, to be seen before it is switched to. Read when the
// panel is opened, and while it shows once a minute and after every change of events or devices;
// the profile that is looked at stays.
class ProfilePreview {
 public:
  ProfilePreview(ProfilePanel& panel, EventPanel& events, HouseIndex& house, const Clock& clock,
                 const ProfileSwitch& profiles, SunTimesOf sun_times);

 private:
  void begin();
  void read_all();
  ProfileFace face_of(const std::string& profile, const SunTimesOf& sun_times) const;
  void show_seen();

  ProfilePanel& panel_;
  HouseIndex& house_;
  const Clock& clock_;
  const ProfileSwitch& profiles_;
  SunTimesOf sun_times_;
};

}  // namespace homewarden
