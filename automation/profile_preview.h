#pragma once

#include <string>

#include "automation/next_run.h"
#include "automation/profile_switch.h"
#include "core/house_index.h"
#include "platform/clock.h"
#include "ui/settings_panels.h"

namespace homewarden {

// What each profile holds and what one would do, to be seen before it is switched to. Read anew
// whenever the panel is opened.
class ProfilePreview {
 public:
  ProfilePreview(ProfilePanel& panel, HouseIndex& house, const Clock& clock,
                 const ProfileSwitch& profiles, SunTimesOf sun_times);

 private:
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
