#pragma once

#include <string>

#include "automation/event_record.h"
#include "base/task.h"
#include "core/list_file.h"
#include "core/module1.h"
#include "platform/event_loop.h"
#include "ui/controls.h"
#include "ui/shared_state.h"

namespace homewarden {

// Writes events into the event list, waiting while others use the files, and says in the status bar
// what it is doing. False, with the list as it was, when that cannot be done. The caller keeps the
// events; what is written is what they are when the files are free.
class EventWriter {
 public:
  EventWriter(StatusBar& status, Flags& flags, EventLoop& loop, Module1& module1, ListFile& events);

  // Behind the others; makes the list when it is missing. An event that is there already is added
  // once more.
  Task<bool> add(const EventRecord& event);

  // Takes the old event out, with lines identical to it, and puts the other one behind the rest.
  // Adds it all the same when the old one is not there any more, and fails when the whole list is
  // not. Takes two seconds and more.
  Task<bool> replace(const EventRecord& old_event, const EventRecord& event);

  // Returns when the text has been painted in panel 2.
  Task<void> progress(std::string text);

 private:
  StatusBar& status_;
  Flags& flags_;
  EventLoop& loop_;
  Module1& module1_;
  ListFile& events_;
};

}  // namespace homewarden
