#include "automation/profiles.h"

#include <string>
#include <utility>

#include "base/flag_guard.h"
#include "core/asking.h"
#include "core/lists/choice_lists.h"

namespace homewarden {

Profiles::Profiles(ProfilePanel& panel, EventPanel& event_panel, PanelStack& panels, Flags& flags,
                   Operations& operations, EventLoop& loop, Dialogs& dialogs,
                   ProfileSwitch& profiles, ProfileChange& change)
    : panel_(panel),
      event_panel_(event_panel),
      panels_(panels),
      flags_(flags),
      loop_(loop),
      dialogs_(dialogs),
      switch_(profiles),
      change_(change) {
  panel.com_profile.click.connect([this, &operations] { operations.start(profile_chosen()); });
}

Task<void> Profiles::profile_chosen() {
  if (flags_.formloading) co_return;
  wanted_ = panel_.com_profile.text;
  if (changing_) co_return;
  const FlagGuard changing(changing_);
  while (wanted_) {
    std::string name = std::move(*wanted_);
    wanted_.reset();
    co_await change_to(std::move(name));
  }
}

Task<void> Profiles::change_to(std::string name) {
  const bool exchanged = co_await change_.change_to(name);
  if (exchanged) {
    panels_.show_only(event_panel_.frm_event);
    preset_time(event_panel_, loop_.local_time());
    co_return;
  }
  if (!wanted_) panel_.com_profile.text = switch_.active();
  co_await tell_error(
      dialogs_,
      "Sorry, the files of the profile " + name +
          " could not be read or written, so the profile was not changed. Please check "
          "the disk, the permissions of the files and that no other program has them open.");
}

}  // namespace homewarden
