#include "automation/profiles.h"

#include <string>
#include <utility>

#include "base/flag_guard.h"
#include "core/asking.h"
#include "core/lists/choice_lists.h"
#include "core/lists/file_lock.h"

namespace homewarden {

Profiles::Profiles(ProfilePanel& panel, EventPanel& event_panel, PanelStack& panels, Flags& flags,
                   Window& window, Operations& operations, EventLoop& loop, Module1& module1,
                   Dialogs& dialogs, ProfileSwitch& profiles, EventList& events,
                   EventCleanup& cleanup)
    : panel_(panel),
      event_panel_(event_panel),
      panels_(panels),
      flags_(flags),
      window_(window),
      loop_(loop),
      module1_(module1),
      dialogs_(dialogs),
      switch_(profiles),
      events_(events),
      cleanup_(cleanup) {
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
  const EventList::Closed closed(events_);
  const bool exchanged = co_await exchange(name);
  co_await events_.loadevents();
  window_.mouse_pointer = MousePointer::kNormal;
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

Task<bool> Profiles::exchange(std::string name) {
  const FileLock lock = co_await lock_files(flags_, module1_);
  window_.mouse_pointer = MousePointer::kHourglass;
  cleanup_.remove_due_events();  // they belong to the profile that goes
  if (!switch_.park()) co_return false;
  co_await module1_.pause(1);
  const bool staged = co_await switch_.stage(name);
  if (!staged) co_return false;
  co_await module1_.pause(1);
  const bool changed = co_await switch_.change();
  if (!changed) co_return false;
  events_.replaced();
  co_await module1_.pause(1);
  co_return true;
}

}  // namespace homewarden
