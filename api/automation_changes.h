#pragma once

#include <optional>
#include <string>

#include "api/change_log.h"
#include "api/event_answers.h"
#include "api/interface_now.h"
#include "api/macro_answers.h"
#include "automation/profile_change.h"
#include "automation/profile_switch.h"
#include "base/json.h"
#include "platform/clock.h"
#include "sun/location.h"
#include "ui/event_panel.h"
#include "ui/home_panel.h"
#include "ui/macro_panel.h"

namespace homewarden {

// Tells the streams of programs when events, macros, the profile, the sun times or the interface
// are others than they were: when the window, an event or a program changes them, and at the
// beginning of each minute, by which events have run and files may have been edited by hand.
class AutomationChanges {
 public:
  AutomationChanges(ChangeLog& log, const EventAnswers& events, const MacroAnswers& macros,
                    OffEvents& off, const ProfileSwitch& profiles, ProfileChange& change,
                    InterfaceNow& interface, const Location& location, const Clock& clock,
                    HouseIndex& house, EventPanel& event_panel, MacroPanel& macro_panel,
                    OptionsPanel& options);

  // Looks at everything; to be called at the beginning of each minute. What it finds the first time
  // was so before and is not told.
  void look();

 private:
  // What a file's answer was when it was looked at last; nothing for one that cannot be read.
  using Seen = std::optional<Json::Array>;

  void look_at_events();
  void look_at_macros();
  void look_at_profile();
  void look_at_sun();
  void look_at_interface();

  ChangeLog& log_;
  const EventAnswers& event_answers_;
  const MacroAnswers& macro_answers_;
  const ProfileSwitch& profiles_;
  InterfaceNow& interface_;
  const Location& location_;
  const OptionsPanel& options_;
  const Clock& clock_;
  bool begun_ = false;
  Seen events_;
  Seen macros_;
  std::string profile_;
  Json sun_;
  Json interface_json_;
};

}  // namespace homewarden
