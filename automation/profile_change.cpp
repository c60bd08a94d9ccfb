#include "automation/profile_change.h"

#include <utility>

#include "core/lists/file_lock.h"

namespace homewarden {

ProfileChange::ProfileChange(ProfilePanel& panel, Window& window, Flags& flags, Module1& module1,
                             ProfileSwitch& profiles, EventList& events, EventCleanup& cleanup)
    : panel_(panel),
      window_(window),
      flags_(flags),
      module1_(module1),
      switch_(profiles),
      events_(events),
      cleanup_(cleanup) {}

Task<bool> ProfileChange::change_to(std::string name) {
  const EventList::Closed closed(events_);
  const std::string shown = panel_.com_profile.text;
  const bool exchanged = co_await exchange(std::move(name));
  co_await events_.loadevents();
  window_.mouse_pointer = MousePointer::kNormal;
  if (exchanged && panel_.com_profile.text.get() == shown)
    panel_.com_profile.text = switch_.active();
  if (exchanged) changed();
  co_return exchanged;
}

Task<bool> ProfileChange::exchange(std::string name) {
  const FileLock lock = co_await lock_files(flags_, module1_);
  window_.mouse_pointer = MousePointer::kHourglass;
  cleanup_.remove_due_events();  // they belong to the profile that goes
  if (!switch_.park()) co_return false;
  co_await module1_.pause(1);
  const bool staged = co_await switch_.stage(name);
  if (!staged) co_return false;
  co_await module1_.pause(1);
  const bool done = co_await switch_.change();
  if (!done) co_return false;
  events_.replaced();
  co_await module1_.pause(1);
  co_return true;
}

}  // namespace homewarden
