#pragma once

#include <functional>
#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "automation/checked_minutes.h"
#include "automation/event_record.h"
#include "base/operations.h"
#include "base/task.h"
#include "core/list_file.h"
#include "core/module1.h"
#include "platform/event_loop.h"
#include "ui/controls.h"
#include "ui/shared_state.h"
#include "x10/device_commands.h"

namespace homewarden {

// Looks at the start of every minute for events that are due and carries them out.
//
// A minute that the clock skipped is made good by the next run, one that it shows twice runs its
// daily events once. Passes of several minutes that take long go on beside each other.
class Scheduler {
 public:
  // `close_program` is called when an installer asks the program to end.
  Scheduler(StatusBar& status, ProgramTimers& timers, Flags& flags, const SunTimes& sun,
            OnceRemoval& once, Operations& operations, EventLoop& loop, Module1& module1,
            ListFile& events, DeviceCommands& commands, std::function<void()> close_program);

  // Looks at every minute since the last run, and returns when its events have been carried out.
  Task<void> eventtimer_run();

 private:
  class FilesInUse;
  class Turn;

  Task<void> check(std::vector<MinuteCheck> minutes);
  Task<int> pass(MinuteCheck check);
  int no_events();
  Task<FilesInUse> take_files();
  Task<int> look_for_events(MinuteCheck check, std::string_view lines);
  Task<bool> carry_out(EventRecord event, Minute minute, int due);
  bool is_queued(const EventRecord& event) const;
  void queue_removal(const EventRecord& event);

  StatusBar& status_;
  ProgramTimers& timers_;
  Flags& flags_;
  const SunTimes& sun_;
  OnceRemoval& once_;
  EventLoop& loop_;
  Module1& module1_;
  ListFile& events_;
  DeviceCommands& commands_;
  std::function<void()> close_program_;
  CheckedMinutes checked_;
  int passes_ = 0;            // that have the files
  std::list<Turn*> waiting_;  // passes that wait for the files, the first of them first
};

}  // namespace homewarden
