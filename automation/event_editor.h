#pragma once

#include <deque>
#include <optional>
#include <string>

#include "automation/event_input.h"
#include "automation/event_list.h"
#include "automation/event_writer.h"
#include "base/operations.h"
#include "base/task.h"
#include "core/list_file.h"
#include "core/module1.h"
#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "ui/event_panel.h"
#include "ui/shared_state.h"
#include "ui/tree_view.h"

namespace homewarden {

// The boxes beside the event list: a new event, or one that was double-clicked. While an event is
// edited the list and the tree take no input, "Save" flashes and "Cancel" is there.
class EventEditor {
 public:
  EventEditor(EventPanel& panel, TreeView& tree, StatusBar& status, Flags& flags, Window& window,
              Operations& operations, EventLoop& loop, Module1& module1, Dialogs& dialogs,
              ListFile& events, EventList& list);

  // "New": an event that switches on daily at the present time. The device stays; an event that was
  // being edited stays in the list as it is.
  void new_event();

  // "Cancel": the same, while an event is edited.
  void cancel();

  // Loads the selected event; nothing happens when none is, or while the list takes no input.
  void edit_selected();

  // "Save": puts the event that stands in the boxes now into the list, in the place of the one that
  // is edited now, whatever happens to both while it waits. Refuses, with a message and without
  // writing, what is no event; asks about one that would never run for want of a day; when the list
  // cannot be written the person hears of it and goes on editing. What is saved while another Save
  // is on its way comes after it, unless it is the same event once more. What is edited or saved
  // follows its device when that gets another name or address.
  Task<void> save();

 private:
  struct Saving {
    EventRecord event;
    std::optional<EventRecord> replaced;
    int session = 0;
  };

  void begin();
  Task<void> save_one();
  Task<bool> write(const Saving& saving);
  void has_been_saved(const Saving& saved);
  void follow(const ListFile::Edit& edit);
  Task<void> hour_chosen();
  void show_dim_choice();
  void offer_minutes();
  void end_editing();
  void delete_edited();

  EventPanel& panel_;
  TreeView& tree_;
  StatusBar& status_;
  Window& window_;
  EventLoop& loop_;
  Dialogs& dialogs_;
  ListFile& events_;
  EventList& list_;
  EventWriter writer_;
  std::optional<EventRecord> edited_;
  std::optional<EventList::Closed> closed_;  // while one is edited
  bool begun_ = false;                       // the panel has been shown
  int session_ = 0;                          // each event that is begun or edited has its own
  std::deque<Saving> savings_;               // the first one is on its way
};

}  // namespace homewarden
