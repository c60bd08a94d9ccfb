#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/operations.h"
#include "base/task.h"
#include "core/house_index.h"
#include "ui/shared_state.h"
#include "x10/device_commands.h"
#include "x10/seen_commands.h"

namespace homewarden {

// One command of the queue text `txt_queue`: "2A3~" is an On, "3B12~" an Off.
struct QueuedCommand {
  int function = 0;
  std::string house;
  int unit = 0;
};

// Reads an item without its tilde. Nothing unless it is an On or an Off to an address that the
// power line has, A to P and 1 to 16.
std::optional<QueuedCommand> parse_queue_item(std::string_view item);

// Carries out what macros have queued: one command at each tick of `timerqueue`, and none while
// another command is being sent. When others never stop sending, it takes its turns among them.
class CommandQueue {
 public:
  CommandQueue(ProgramTimers& timers, HiddenLists& lists, const Flags& flags,
               Operations& operations, HouseIndex& house, DeviceCommands& commands,
               SeenCommands& seen);

  // Carries out the first item and then removes every copy of it, whether or not it could be sent.
  // While another command is being sent nothing happens, until two others have had the line since
  // the queue was first put off; then it waits for its turn among them. What is no command is
  // removed unsent.
  Task<void> timerqueue_run();

 private:
  bool is_to_wait();
  Task<void> carry_out(QueuedCommand command);

  TextBox& queue_;
  const Flags& flags_;
  HouseIndex& house_;
  DeviceCommands& commands_;
  SeenCommands& seen_;
  bool running_ = false;
  std::optional<unsigned long> put_off_at_;  // turns on the line at the first tick of a crowd
};

}  // namespace homewarden
