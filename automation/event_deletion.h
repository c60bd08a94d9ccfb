#pragma once

#include <optional>
#include <string>

#include "automation/event_list.h"
#include "base/operations.h"
#include "base/task.h"
#include "core/house_index.h"
#include "core/list_file.h"
#include "core/module1.h"
#include "platform/dialogs.h"
#include "ui/event_panel.h"
#include "ui/shared_state.h"

namespace homewarden {

// Deletes an event at once, and brings the one deleted last back. Connects the list's pop-up menu.
class EventDeletion {
 public:
  EventDeletion(EventPanel& panel, Flags& flags, Operations& operations, Module1& module1,
                Dialogs& dialogs, HouseIndex& house, ListFile& events, EventList& list);

  // Deletes the selected event, without a question, when the key is Ctrl+D or Delete, and offers to
  // undo that. Does nothing while the list takes no input, and when another profile's events came
  // into the list before the files were free. A list that cannot be written is told and stays.
  Task<void> deleteevent(int KeyAscii);

  // Puts the lines that were deleted last back, unless they are in the list again, and ends the
  // offer. When the list cannot be written the person hears of it and can try again.
  Task<void> undo();

 private:
  struct Deleted {
    EventRecord event;
    std::string lines;  // as they stood in the file, CR LF between them
    bool did_something = false;
  };

  bool remove(const EventRecord& event);
  bool put_back();
  void offer(Deleted deleted);
  void forget();
  void house_changed();

  EventPanel& panel_;
  Flags& flags_;
  Module1& module1_;
  Dialogs& dialogs_;
  HouseIndex& house_;
  ListFile& events_;
  EventList& list_;
  std::optional<Deleted> deleted_;
  int deletions_ = 0;  // so that a click that waited undoes what was offered when it was made
  int profiles_ = 0;   // changes of the profile
};

}  // namespace homewarden
