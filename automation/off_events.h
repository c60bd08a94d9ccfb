#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "automation/event_list.h"
#include "automation/event_record.h"
#include "automation/once_events.h"
#include "automation/profile_switch.h"
#include "base/signal.h"
#include "base/task.h"
#include "core/list_file.h"
#include "core/module1.h"
#include "platform/files.h"
#include "ui/shared_state.h"

namespace homewarden {

// The events of the active profile that are switched off. A line of an event list has no mark for
// that: they lie in the list of a profile of their own, "Standard (off).txt" beside the events of
// Standard, which nothing runs.
//
// An event is first written where it goes and then taken away from where it was. After a stop
// between the two it is in both lists, and counts as on.
class OffEvents {
 public:
  OffEvents(Files& files, std::filesystem::path folder, const ProfileSwitch& profiles,
            ListFile& events, EventList& list, const OnceEvents& once, Flags& flags,
            Module1& module1);

  struct Entry {
    EventRecord event;
    bool on = true;
  };
  // Those that are on and then those that are off, each in the order of its list; equal lines as
  // one. Nothing when one of the lists is there and cannot be read.
  std::optional<std::vector<Entry>> all();
  // Which list cannot be read, in a sentence for a person; "" when both can.
  std::string trouble();

  enum class Outcome { kDone, kGone, kBusy, kRefused };
  struct Result {
    Outcome outcome = Outcome::kDone;
    std::string problem;  // a sentence for a person; "" when it is done
  };
  // Switches the event with this key on or off; one that is so already stays. Waits some seconds at
  // most for whoever works on the files. kGone: there is no such event any more. kRefused: the
  // files do not allow it, or somebody edits the event; everything is as it was.
  Task<Result> switch_event(std::string key, bool on);

  // An event was switched on or off.
  Signal<> changed;

 private:
  ListFile off_list();
  Result move(const EventRecord& event, bool on);
  Result refused(const ListFile& list) const;

  Files& files_;
  std::filesystem::path folder_;
  const ProfileSwitch& profiles_;
  ListFile& events_;
  EventList& list_;
  const OnceEvents& once_;
  Flags& flags_;
  Module1& module1_;
};

}  // namespace homewarden
