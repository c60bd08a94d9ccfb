#include "automation/event_writer.h"

#include <utility>

#include "core/lists/file_lock.h"
#include "platform/waiting.h"

namespace homewarden {

EventWriter::EventWriter(StatusBar& status, Flags& flags, EventLoop& loop, Module1& module1,
                         ListFile& events)
    : status_(status), flags_(flags), loop_(loop), module1_(module1), events_(events) {}

// The old line goes and the new one comes in one step, so that a stop in between loses neither.
Task<bool> EventWriter::replace(const EventRecord& old_event, const EventRecord& event) {
  {
    const FileLock lock = co_await lock_files(flags_, module1_);
    co_await progress("Please wait, preparing to edit your event");
    events_.remove_scratch();
    const auto content = events_.content();
    if (!content) co_return false;
    const auto old_lines = lines_of_event(*content, old_event.key());
    if (!events_.write_scratch(old_lines, event.key())) co_return false;
    co_await progress("Old event deleted, now cleaning up");
    co_await module1_.pause(1);
    if (!events_.use_scratch()) co_return false;
    co_await module1_.pause(1);
  }
  const FileLock lock = co_await lock_files(flags_, module1_);
  co_await progress("Please wait, saving your new event now");
  co_return true;
}

Task<bool> EventWriter::add(const EventRecord& event) {
  const FileLock lock = co_await lock_files(flags_, module1_);
  co_await progress("Please wait, saving your new event now");
  co_return events_.add(event.key());
}

Task<void> EventWriter::progress(std::string text) {
  status_.panel2 = std::move(text);
  co_await pending_events(loop_);
}

}  // namespace homewarden
