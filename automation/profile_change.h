#pragma once

#include <string>

#include "automation/event_cleanup.h"
#include "automation/event_list.h"
#include "automation/profile_switch.h"
#include "base/signal.h"
#include "base/task.h"
#include "core/module1.h"
#include "ui/controls.h"
#include "ui/settings_panels.h"
#include "ui/shared_state.h"

namespace homewarden {

// A change of the profile from beginning to end, whoever asks for it: the window or a program.
class ProfileChange {
 public:
  ProfileChange(ProfilePanel& panel, Window& window, Flags& flags, Module1& module1,
                ProfileSwitch& profiles, EventList& events, EventCleanup& cleanup);

  // Waits until nobody works on the files; it then takes three seconds, in which the event list
  // takes no input. True when the events of this profile are in the list, and its name in the box
  // of the panel unless another one was chosen there meanwhile. False, with the profile as it was,
  // when the files cannot be read or written.
  Task<bool> change_to(std::string name);

  // The profile is another one, and its events are in the list.
  Signal<> changed;

 private:
  Task<bool> exchange(std::string name);

  ProfilePanel& panel_;
  Window& window_;
  Flags& flags_;
  Module1& module1_;
  ProfileSwitch& switch_;
  EventList& events_;
  EventCleanup& cleanup_;
};

}  // namespace homewarden
