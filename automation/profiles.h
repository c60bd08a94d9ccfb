#pragma once

#include <optional>
#include <string>

#include "automation/profile_change.h"
#include "automation/profile_switch.h"
#include "base/operations.h"
#include "base/task.h"
#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "ui/event_panel.h"
#include "ui/panel_stack.h"
#include "ui/settings_panels.h"
#include "ui/shared_state.h"

namespace homewarden {

// The profiles panel: choosing a profile exchanges the event list.
class Profiles {
 public:
  Profiles(ProfilePanel& panel, EventPanel& event_panel, PanelStack& panels, Flags& flags,
           Operations& operations, EventLoop& loop, Dialogs& dialogs, ProfileSwitch& profiles,
           ProfileChange& change);

  // Changes to the profile in the box; nothing happens while the window is being loaded. One that
  // is chosen during a change comes after it; of several the last. When the files cannot be read or
  // written the profile stays and the person hears of it.
  Task<void> profile_chosen();

 private:
  Task<void> change_to(std::string name);

  ProfilePanel& panel_;
  EventPanel& event_panel_;
  PanelStack& panels_;
  Flags& flags_;
  EventLoop& loop_;
  Dialogs& dialogs_;
  ProfileSwitch& switch_;
  ProfileChange& change_;
  std::optional<std::string> wanted_;  // the next one
  bool changing_ = false;
};

}  // namespace homewarden
