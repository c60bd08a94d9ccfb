#pragma once

#include <optional>
#include <string>

#include "automation/event_input.h"
#include "automation/event_list.h"
#include "base/operations.h"
#include "base/task.h"
#include "core/list_file.h"
#include "core/module1.h"
#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "ui/frm_main.h"

namespace homewarden {

// The boxes above the event list: a new event, or one that was double-clicked. While an event is
// edited the list and the tree take no input and "Save" flashes.
class EventEditor {
 public:
  EventEditor(FrmMain& form, Operations& operations, EventLoop& loop, Module1& module1,
              Dialogs& dialogs, ListFile& events, EventList& list);

  // "New": an event that switches on daily at the present time. The device stays.
  void new_event();

  // Loads the selected event; nothing happens when none is.
  void edit_selected();

  // "Save": puts the event into the list, in the place of the one that is edited. Refuses, with a
  // message and without writing, what is no event; when the list cannot be written the person hears
  // of it and goes on editing.
  Task<void> save();

 private:
  Task<void> hour_chosen();
  void show_dim_choice();
  void offer_minutes();
  void end_editing();
  EventInput input() const;
  Task<bool> replace_edited(const EventRecord& event);
  Task<bool> add(const EventRecord& event);
  Task<void> progress(const char* text);

  FrmMain& form_;
  EventLoop& loop_;
  Module1& module1_;
  Dialogs& dialogs_;
  ListFile& events_;
  EventList& list_;
  std::optional<EventRecord> edited_;
};

}  // namespace homewarden
