#pragma once

#include <set>
#include <string>
#include <string_view>

#include "automation/event_memory.h"
#include "automation/event_record.h"
#include "core/list_file.h"
#include "core/notices.h"
#include "ui/shared_state.h"

namespace homewarden {

// The once-events that have come due and wait for their removal from the list. They are remembered
// over a restart, do not run again, and are told when they cannot be removed.
class OnceEvents {
 public:
  OnceEvents(OnceRemoval& removal, EventMemory& memory, Notices& notices);

  // Fills the slots with what the run of the program before could not remove.
  void restore();

  bool is_queued(const EventRecord& event) const;
  // With all slots in use the event stays in the list and runs again at its next time; that is told
  // until it is queued or gone from the list.
  void queue(const EventRecord& event);

  // Changes the keys of those that wait as the list of events was changed.
  void edit(const ListFile::Edit& edit);

  // What became of the event in a slot; the first one empties it.
  void removed(std::string& slot);
  void not_removed(const std::string& slot);

  // Whether an event found no slot; and what to do with the list that it may be gone from.
  bool has_unqueued() const { return !unqueued_.empty(); }
  void look_for_unqueued(std::string_view list);

 private:
  void remember();
  void tell();

  OnceRemoval& removal_;
  EventMemory& memory_;
  Notices& notices_;
  std::set<std::string> not_removed_;
  std::set<std::string> unqueued_;
};

}  // namespace homewarden
