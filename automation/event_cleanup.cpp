#include "automation/event_cleanup.h"

#include <string>

#include "base/flag_guard.h"
#include "core/lists/file_lock.h"
#include "core/time_text.h"
#include "platform/waiting.h"

namespace homewarden {

EventCleanup::EventCleanup(ProgramTimers& timers, OnceRemoval& due, OnceEvents& once, Flags& flags,
                           StatusBar& status, Operations& operations, EventLoop& loop,
                           Module1& module1, ListFile& events, EventList& list)
    : due_(due),
      once_(once),
      flags_(flags),
      status_(status),
      loop_(loop),
      module1_(module1),
      events_(events),
      list_(list) {
  timers.timerdelete.tick.connect([this, &operations] { operations.start(timerdelete_run()); });
}

// Several removals outlast the interval of the timer; a run that comes meanwhile has nothing to do.
Task<void> EventCleanup::timerdelete_run() {
  if (cleaning_) co_return;
  if (flags_.filebusy) co_await module1_.pause(2);
  if (flags_.filebusy || cleaning_) co_return;
  const FlagGuard cleaning(cleaning_);
  for (std::size_t slot = 0; slot < OnceRemoval::kOnceSlots; ++slot)
    if (!due_.once_removal[slot].empty()) co_await remove_once_event(due_.once_removal[slot]);
  if (once_.has_unqueued()) once_.look_for_unqueued(events_.content().value_or(""));
}

void EventCleanup::remove_due_events() {
  for (std::size_t slot = 0; slot < OnceRemoval::kOnceSlots; ++slot) {
    std::string& key = due_.once_removal[slot];
    if (key.empty()) continue;
    const bool removed = !events_.exists() || (write_without(key) && events_.use_scratch());
    if (removed) once_.removed(key);
  }
}

// Writes the list without the once-event into the scratch file.
bool EventCleanup::write_without(const std::string& once_key) {
  const auto content = events_.content();
  return content && events_.write_scratch(lines_of_once_event(*content, once_key));
}

Task<void> EventCleanup::remove_once_event(std::string& slot) {
  {
    const FileLock lock = co_await lock_files(flags_, module1_);
    if (slot.empty()) co_return;
    if (!events_.exists()) {
      once_.removed(slot);
      co_return;
    }
    status_.panel2 = "Found an old event to delete, deleting now";
    co_await pending_events(loop_);
    events_.remove_scratch();
    if (!write_without(slot)) {
      once_.not_removed(slot);
      co_return;
    }
    status_.panel2 = "Old event deleted at " + hh_mm(loop_.local_time());
    co_await pending_events(loop_);
    co_await module1_.pause(1);
    if (!events_.use_scratch()) {
      status_.panel2 = "The old event could not be deleted, trying again";
      once_.not_removed(slot);
      co_return;
    }
    co_await module1_.pause(1);
    once_.removed(slot);
  }
  co_await list_.loadevents();
}

}  // namespace homewarden
