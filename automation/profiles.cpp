#include "automation/profiles.h"

#include <string>
#include <utility>

#include "core/lists/choice_lists.h"
#include "core/lists/file_lock.h"

namespace homewarden {

Profiles::Profiles(FrmMain& form, Operations& operations, EventLoop& loop, Module1& module1,
                   Dialogs& dialogs, ProfileSwitch& profiles, EventList& events,
                   EventCleanup& cleanup)
    : form_(form),
      loop_(loop),
      module1_(module1),
      dialogs_(dialogs),
      switch_(profiles),
      events_(events),
      cleanup_(cleanup) {
  form.com_profile.click.connect([this, &operations] { operations.start(profile_chosen()); });
}

Task<void> Profiles::profile_chosen() {
  if (form_.formloading) co_return;
  const std::string name = form_.com_profile.text;
  const EventList::Closed closed(events_);
  const bool exchanged = co_await exchange(name);
  co_await events_.loadevents();
  form_.mouse_pointer = MousePointer::kNormal;
  if (exchanged) {
    form_.show_only(form_.frm_event);
    preset_time(form_, loop_.local_time());
    co_return;
  }
  form_.com_profile.text = switch_.active();
  Message message{
      "Sorry, the files of the profile " + name +
          " could not be read or written, so the profile was not changed. Please check the disk "
          "and the permissions of the files.",
      "Error", MessageIcon::kCritical, MessageButtons::kOk};
  co_await dialogs_.message_box(std::move(message));
}

Task<bool> Profiles::exchange(std::string name) {
  const FileLock lock = co_await lock_files(form_, module1_);
  form_.mouse_pointer = MousePointer::kHourglass;
  cleanup_.remove_due_events();  // they belong to the profile that goes
  if (!switch_.park()) co_return false;
  co_await module1_.pause(1);
  if (!switch_.stage(name)) co_return false;
  co_await module1_.pause(1);
  if (!switch_.change()) co_return false;
  co_await module1_.pause(1);
  co_return true;
}

}  // namespace homewarden
