#include "automation/event_cleanup.h"

#include <string>
#include <utility>

#include "base/flag_guard.h"
#include "core/lists/file_lock.h"
#include "core/time_text.h"
#include "platform/waiting.h"
#include "ui/key_codes.h"

namespace homewarden {

EventCleanup::EventCleanup(FrmMain& form, Operations& operations, EventLoop& loop, Module1& module1,
                           Dialogs& dialogs, ListFile& events, EventList& list)
    : form_(form), loop_(loop), module1_(module1), dialogs_(dialogs), events_(events), list_(list) {
  const auto delete_event = [this, &operations](int key) { operations.start(deleteevent(key)); };
  form.ListView1.key_press.connect(delete_event);
  form.mnu_delevent.click.connect([delete_event] { delete_event(kControlD); });
  form.ListView1.mouse_down.connect([this](int button) {
    if ((button & kRightButton) != 0) form_.mnuPopup1.popped_up();
  });
  form.timerdelete.tick.connect([this, &operations] { operations.start(timerdelete_run()); });
}

// Several removals outlast the interval of the timer; a run that comes meanwhile has nothing to do.
Task<void> EventCleanup::timerdelete_run() {
  if (cleaning_) co_return;
  if (form_.filebusy) co_await module1_.pause(2);
  if (form_.filebusy || cleaning_) co_return;
  const FlagGuard cleaning(cleaning_);
  for (std::size_t slot = 0; slot < FrmMain::kOnceSlots; ++slot)
    if (!form_.once_removal[slot].empty()) co_await remove_once_event(form_.once_removal[slot]);
}

void EventCleanup::remove_due_events() {
  for (std::size_t slot = 0; slot < FrmMain::kOnceSlots; ++slot) {
    std::string& key = form_.once_removal[slot];
    if (key.empty()) continue;
    const bool removed = !events_.exists() || (write_without(key) && events_.use_scratch());
    if (removed) key.clear();
  }
}

// Writes the list without the once-event into the scratch file.
bool EventCleanup::write_without(const std::string& once_key) {
  const auto content = events_.content();
  return content && events_.write_scratch(lines_of_once_event(*content, once_key));
}

Task<void> EventCleanup::remove_once_event(std::string& slot) {
  {
    const FileLock lock = co_await lock_files(form_, module1_);
    if (slot.empty() || !events_.exists()) {
      slot.clear();
      co_return;
    }
    form_.Statusbar.panel2 = "Found an old event to delete, deleting now";
    co_await pending_events(loop_);
    events_.remove_scratch();
    if (!write_without(slot)) co_return;
    form_.Statusbar.panel2 = "Old event deleted at " + hh_mm(loop_.local_time());
    co_await pending_events(loop_);
    co_await module1_.pause(1);
    if (!events_.use_scratch()) co_return;
    co_await module1_.pause(1);
    slot.clear();
  }
  co_await list_.loadevents();
}

Task<void> EventCleanup::deleteevent(int KeyAscii) {
  if (KeyAscii != kControlD || !form_.ListView1.enabled) co_return;
  if (form_.ListView1.rows.get().empty()) {
    Message message{"You dont have any events to delete", "No events", MessageIcon::kInformation,
                    MessageButtons::kOk};
    co_await dialogs_.message_box(std::move(message));
    co_return;
  }
  const auto event = list_.selected();
  if (!event || !events_.exists()) co_return;
  bool deleted = false;
  {
    const FileLock lock = co_await lock_files(form_, module1_);
    const auto content = events_.content();
    deleted = content && events_.write_scratch(lines_of_event(*content, event->key())) &&
              events_.use_scratch();
  }
  if (deleted) {
    co_await list_.loadevents();
    co_return;
  }
  Message message{
      "Sorry, the event list evelst.hwd could not be written, so the event is still there. Please "
      "check the disk and the permissions of the file.",
      "Error", MessageIcon::kCritical, MessageButtons::kOk};
  co_await dialogs_.message_box(std::move(message));
}

}  // namespace homewarden
