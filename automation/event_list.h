#pragma once

#include <optional>
#include <string>

#include "automation/event_record.h"
#include "base/signal.h"
#include "base/task.h"
#include "core/house_index.h"
#include "core/list_file.h"
#include "core/module1.h"
#include "ui/event_panel.h"
#include "ui/macro_panel.h"
#include "ui/shared_state.h"

namespace homewarden {

// The event list and the macro list as the window shows them. Rows that do nothing in this house
// are marked with the reason, anew whenever the house changes.
class EventList {
 public:
  // While one of these lives the list takes no input: an event that somebody began to edit would be
  // spoiled by a change of the house or of the profile.
  class Closed {
   public:
    // May be nested; the list takes input again when the last one has gone.
    explicit Closed(EventList& list) : list_(list) {
      if (list_.closings_++ == 0) list_.panel_.ListView1.enabled = false;
    }
    Closed(const Closed&) = delete;
    Closed& operator=(const Closed&) = delete;
    ~Closed() {
      if (--list_.closings_ == 0) list_.panel_.ListView1.enabled = true;
    }

   private:
    EventList& list_;
  };

  EventList(EventPanel& panel, MacroPanel& macro_panel, Flags& flags, Module1& module1,
            HouseIndex& house, ListFile& events, ListFile& macros);

  // Fills both lists from their files, waiting while others work on them. Missing files are empty
  // lists. Lines that are no events are left out and told above the event list, as is a file that
  // cannot be read; the macro list shows every line of its file and is empty when that cannot be
  // read. The event that was selected stays selected.
  Task<void> loadevents();

  // The event in the selected row; nothing when no row is.
  std::optional<EventRecord> selected() const;
  // Selects the row of this event; none when it is not in the list.
  void select(const std::optional<EventRecord>& event);

  // Raised when the file holds the events of another profile: what was meant for those of the old
  // one must not be done to it.
  Signal<> replaced;

  // Raised when lines of the file and of the profiles were changed by this, while the files are
  // locked: an event that somebody holds is now what its line has become.
  Signal<const ListFile::Edit&> renamed;

  // Asked before an event is taken out of the list by somebody who is not at the window: who works
  // on it there sets the flag.
  Signal<const EventRecord&, bool&> in_use;

 private:
  void follow(const ListFile::Edit& edit);
  void load_macros();
  void show_events(const std::optional<std::string>& content);
  void mark_events();
  void mark_macros();

  EventPanel& panel_;
  MacroPanel& macro_panel_;
  Flags& flags_;
  Module1& module1_;
  HouseIndex& house_;
  ListFile& events_;
  ListFile& macros_;
  int closings_ = 0;
};

// A row of `ListView1` and back. A row must have all eight cells; a percent sign in its level is
// not part of the event.
ListView::Row row_of(const EventRecord& event);
EventRecord event_in(const ListView::Row& row);

}  // namespace homewarden
