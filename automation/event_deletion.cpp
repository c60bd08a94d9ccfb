#include "automation/event_deletion.h"

#include <utility>

#include "automation/event_effect.h"
#include "automation/event_words.h"
#include "base/lines.h"
#include "core/asking.h"
#include "core/lines_of_key.h"
#include "core/lists/file_lock.h"
#include "ui/key_codes.h"

namespace homewarden {
namespace {

const char* const kStillThere =
    "Sorry, the event list evelst.hwd could not be written, so the event is still there. Please "
    "check the disk, the permissions of the file and that no other program has it open.";
const char* const kNotBack =
    "Sorry, the event list evelst.hwd could not be written, so the event is not back yet. Please "
    "check the disk, the permissions of the file and that no other program has it open, then "
    "click Undo again.";

bool has_line(std::string_view content, std::string_view wanted) {
  LineReader reader(content);
  while (const auto line = reader.next())
    if (*line == wanted) return true;
  return false;
}

}  // namespace

EventDeletion::EventDeletion(EventPanel& panel, Flags& flags, Operations& operations,
                             Module1& module1, Dialogs& dialogs, HouseIndex& house,
                             ListFile& events, EventList& list)
    : panel_(panel),
      flags_(flags),
      module1_(module1),
      dialogs_(dialogs),
      house_(house),
      events_(events),
      list_(list) {
  const auto delete_event = [this, &operations](int key) { operations.start(deleteevent(key)); };
  panel.ListView1.key_press.connect(delete_event);
  panel.mnu_delevent.click.connect([delete_event] { delete_event(kControlD); });
  panel.ListView1.mouse_down.connect([this](int button) {
    if ((button & kRightButton) != 0) panel_.mnuPopup1.popped_up();
  });
  panel.lab_undo.click.connect([this, &operations] { operations.start(undo()); });
  house.changed.connect([this] { house_changed(); });
  list.replaced.connect([this] {
    ++profiles_;
    forget();
  });
}

Task<void> EventDeletion::deleteevent(int KeyAscii) {
  const bool deletes = KeyAscii == kControlD || KeyAscii == kDelete;
  if (!deletes || !panel_.ListView1.enabled) co_return;
  if (panel_.ListView1.rows.get().empty()) {
    co_await tell(dialogs_, "You dont have any events to delete", "No events");
    co_return;
  }
  const auto event = list_.selected();
  if (!event || !events_.exists()) co_return;
  const int profile = profiles_;
  bool deleted = false;
  {
    const FileLock lock = co_await lock_files(flags_, module1_);
    if (profile != profiles_) co_return;
    deleted = remove(*event);
  }
  if (deleted)
    co_await list_.loadevents();
  else
    co_await tell_error(dialogs_, kStillThere);
}

bool EventDeletion::remove(const EventRecord& event) {
  const auto content = events_.content();
  if (!content) return !events_.exists();
  const ListFile::Choice choice = lines_of_event(*content, event.key());
  if (!events_.write_scratch(choice) || !events_.use_scratch()) return false;
  offer({event, chosen_lines(*content, choice), what_is_wrong_with(event, house_).empty()});
  return true;
}

Task<void> EventDeletion::undo() {
  const int deletion = deletions_;
  bool back = false;
  EventRecord event;
  {
    const FileLock lock = co_await lock_files(flags_, module1_);
    if (!deleted_ || deletion != deletions_) co_return;
    event = deleted_->event;
    back = put_back();
    if (back) forget();
  }
  if (!back) {
    co_await tell_error(dialogs_, kNotBack);
    co_return;
  }
  co_await list_.loadevents();
  list_.select(event);
}

bool EventDeletion::put_back() {
  const auto content = events_.content();
  const std::string_view lines = deleted_->lines;
  if (content && has_line(*content, lines.substr(0, lines.find('\r')))) return true;
  return events_.add(lines);
}

void EventDeletion::offer(Deleted deleted) {
  forget();
  if (deleted.lines.empty()) return;  // somebody else was faster
  ++deletions_;
  panel_.lab_undo.caption =
      "Deleted: " + event_in_words(deleted.event, deleted.event.device_label()) + ". Undo";
  panel_.lab_undo.visible = true;
  deleted_ = std::move(deleted);
}

void EventDeletion::forget() {
  deleted_.reset();
  panel_.lab_undo.visible = false;
}

// An event of a device that has been deleted meanwhile would act on nothing.
void EventDeletion::house_changed() {
  if (deleted_ && deleted_->did_something && !what_is_wrong_with(deleted_->event, house_).empty())
    forget();
}

}  // namespace homewarden
