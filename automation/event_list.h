#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "automation/event_record.h"
#include "base/task.h"
#include "core/list_file.h"
#include "core/module1.h"
#include "platform/files.h"
#include "ui/frm_main.h"

namespace homewarden {

// The event list and the macro list as the window shows them.
class EventList {
 public:
  // While one of these lives the list takes no input: an event that somebody began to edit would be
  // spoiled by a change of the house or of the profile.
  class Closed {
   public:
    explicit Closed(EventList& list) : list_(list) {
      if (list_.closings_++ == 0) list_.form_.ListView1.enabled = false;
    }
    Closed(const Closed&) = delete;
    Closed& operator=(const Closed&) = delete;
    ~Closed() {
      if (--list_.closings_ == 0) list_.form_.ListView1.enabled = true;
    }

   private:
    EventList& list_;
  };

  EventList(FrmMain& form, Module1& module1, Files& files, ListFile& events,
            const std::filesystem::path& folder);

  // Fills both lists from their files. Missing files are empty lists; what cannot be understood is
  // left out of the view and told above it. The event that was selected stays selected.
  Task<void> loadevents();

  // The event in the selected row; nothing when no row is.
  std::optional<EventRecord> selected() const;
  // Selects the row of this event; none when it is not in the list.
  void select(const std::optional<EventRecord>& event);

 private:
  void load_macros();
  void show_events(const std::optional<std::string>& content);

  FrmMain& form_;
  Module1& module1_;
  Files& files_;
  ListFile& events_;
  std::filesystem::path macro_file_;
  int closings_ = 0;
};

// A row of `ListView1` and back.
ListView::Row row_of(const EventRecord& event);
EventRecord event_in(const ListView::Row& row);

}  // namespace homewarden
