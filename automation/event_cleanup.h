#pragma once

#include <string>

#include "automation/event_list.h"
#include "automation/once_events.h"
#include "base/operations.h"
#include "base/task.h"
#include "core/list_file.h"
#include "core/module1.h"
#include "platform/event_loop.h"
#include "ui/controls.h"
#include "ui/shared_state.h"

namespace homewarden {

// Takes once-events that have come due out of the event list, every ten seconds.
class EventCleanup {
 public:
  EventCleanup(ProgramTimers& timers, OnceRemoval& due, OnceEvents& once, Flags& flags,
               StatusBar& status, Operations& operations, EventLoop& loop, Module1& module1,
               ListFile& events, EventList& list);

  // Removes the once-events whose keys wait in `once_removal`. What cannot be removed now, because
  // the files are in use or cannot be written, keeps its slot for the next run; the second is told.
  Task<void> timerdelete_run();

  // The same at once, without a word, for who holds the files. What cannot be removed keeps its
  // slot; the list that is shown stays as it is.
  void remove_due_events();

 private:
  bool write_without(const std::string& once_key);
  Task<void> remove_once_event(std::string& slot);

  OnceRemoval& due_;
  OnceEvents& once_;
  Flags& flags_;
  StatusBar& status_;
  EventLoop& loop_;
  Module1& module1_;
  ListFile& events_;
  EventList& list_;
  bool cleaning_ = false;
};

}  // namespace homewarden
