#pragma once

#include "automation/event_list.h"
#include "base/operations.h"
#include "base/task.h"
#include "core/list_file.h"
#include "core/module1.h"
#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "ui/frm_main.h"

namespace homewarden {

// How events leave the list: once-events that have come due by the clean-up timer, any event by a
// person's deletion. Connects the list's pop-up menu.
class EventCleanup {
 public:
  EventCleanup(FrmMain& form, Operations& operations, EventLoop& loop, Module1& module1,
               Dialogs& dialogs, ListFile& events, EventList& list);

  // Removes the once-events whose keys wait in `once_removal`. What cannot be removed now keeps its
  // slot for the next run.
  Task<void> timerdelete_run();

  // The same at once, for who holds the files.
  void remove_due_events();

  // Deletes the selected event, without a question, when the key is Ctrl+D (4).
  Task<void> deleteevent(int KeyAscii);

 private:
  bool write_without(const std::string& once_key);
  Task<void> remove_once_event(std::string& slot);

  FrmMain& form_;
  EventLoop& loop_;
  Module1& module1_;
  Dialogs& dialogs_;
  ListFile& events_;
  EventList& list_;
  bool cleaning_ = false;
};

}  // namespace homewarden
