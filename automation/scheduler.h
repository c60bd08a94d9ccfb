#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/checked_minutes.h"
#include "automation/event_memory.h"
#include "automation/missed_events.h"
#include "automation/once_events.h"
#include "base/operations.h"
#include "base/signal.h"
#include "base/task.h"
#include "core/list_file.h"
#include "core/module1.h"
#include "core/notices.h"
#include "platform/event_loop.h"
#include "sun/location.h"
#include "ui/controls.h"
#include "ui/shared_state.h"
#include "x10/device_commands.h"

namespace homewarden {

// Looks at the start of every minute for events that are due and carries them out.
//
// What nobody looked at, because the clock skipped it or the program did not run, is made good by
// the next run as far as that still makes sense; what had its turn on a day does not run again on
// it, whatever the clock shows. Passes of several minutes that take long go on beside each other.
class Scheduler {
 public:
  // `close_program` is called when an installer asks the program to end.
  Scheduler(StatusBar& status, Notices& notices, ProgramTimers& timers, Flags& flags,
            const SunTimes& sun, const Location& location, EventMemory& memory, OnceEvents& once,
            Operations& operations, EventLoop& loop, Module1& module1, ListFile& events,
            DeviceCommands& commands, std::function<void()> close_program);

  // Looks at every minute since the last run, of this or an earlier start of the program, and
  // returns when its events have been carried out.
  Task<void> eventtimer_run();

  // A run begins in another minute than that of the start, and nothing of it has happened yet. The
  // look that the clock asks for at once does not count: it makes good what was missed.
  Signal<> minute_begins;

 private:
  class FilesInUse;
  class Turn;

  struct Run {
    long number = 0;
    Minute now;
    std::optional<MinuteSpan> missed;
    CheckedMinutes checked_before;
    bool continues = false;  // what another start of the program looked at
  };
  // A run, and what has been looked at when it is done.
  struct Unfinished {
    long run = 0;
    CheckedMinutes checked;
  };

  struct Told {
    std::string subject;
    std::chrono::milliseconds at;  // by the clock that never jumps
  };

  bool begin();
  void finish(const Run& run, bool was_read);
  Task<bool> look_at(Run run);
  bool no_events();
  void tell_caught_up(std::string text, const Run& run);
  void withdraw_oldest();
  Task<FilesInUse> take_files();
  Task<std::vector<DueEvent>> due_events(std::string_view lines, MinuteSpan span, SunTimes sun);
  Task<std::string> catch_up(Run run, std::string_view lines, const std::vector<DueEvent>& next);
  Task<void> run_missed(Run run, CatchUp& plan);
  Task<void> run_due(std::vector<DueEvent> events, Run run);
  void say_found(const DueEvent& due);
  Task<bool> switch_device(LineTurn turn, DueEvent due, long run);
  bool had_turn(const DueEvent& due) const;
  void note_turn(const DueEvent& due);
  void switched_by_others(const SwitchTarget& target);

  StatusBar& status_;
  Notices& notices_;
  ProgramTimers& timers_;
  Flags& flags_;
  const SunTimes& sun_;
  const Location& location_;
  EventMemory& memory_;
  OnceEvents& once_;
  EventLoop& loop_;
  Module1& module1_;
  ListFile& events_;
  DeviceCommands& commands_;
  std::function<void()> close_program_;
  const Minute started_;
  bool has_begun_ = false;  // with what an earlier start of the program left
  CheckedMinutes checked_;  // by runs that have begun; empty before the first one
  long last_run_ = 0;
  std::list<Unfinished> runs_;  // the oldest first
  // That switched it last, by address; what others switch counts as of the next run.
  std::map<std::string, long> run_of_device_;
  bool switching_ = false;      // a run has the line
  std::deque<Told> caught_up_;  // what the notices still tell
  int passes_ = 0;              // that have the files
  std::list<Turn*> waiting_;    // passes that wait for the files, the first first
};

}  // namespace homewarden
