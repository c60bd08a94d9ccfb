#include "x10/command_queue.h"

#include <utility>

#include "base/flag_guard.h"
#include "base/text.h"
#include "core/devices.h"
#include "platform/interface_control.h"

namespace homewarden {
namespace {

constexpr int kFullyOn = 100;
constexpr unsigned long kPatience = 2;  // turns of others on the line

// Every occurrence, letter case ignored.
std::string without_item(std::string queue, const std::string& item) {
  for (;;) {
    const auto found = find_ignoring_case(queue, item);
    if (found == std::string::npos) return queue;
    queue.erase(found, item.size());
  }
}

}  // namespace

CommandQueue::CommandQueue(ProgramTimers& timers, HiddenLists& lists, const Flags& flags,
                           Operations& operations, HouseIndex& house, DeviceCommands& commands,
                           SeenCommands& seen)
    : queue_(lists.txt_queue), flags_(flags), house_(house), commands_(commands), seen_(seen) {
  timers.timerqueue.tick.connect([this, &operations] { operations.start(timerqueue_run()); });
}

Task<void> CommandQueue::timerqueue_run() {
  const std::string queue = queue_.text;
  if (running_ || queue.empty()) co_return;
  if (is_to_wait()) co_return;
  const FlagGuard running(running_);
  const std::string item = queue.substr(0, queue.find('~'));
  const auto command = parse_queue_item(item);
  if (command) co_await carry_out(*command);
  // A last item without its tilde goes too, or it would stay at the front for ever.
  queue_.text = queue_.text.get() == item ? std::string() : without_item(queue_.text, item + "~");
}

bool CommandQueue::is_to_wait() {
  if (!flags_.sending) {
    put_off_at_.reset();
    return false;
  }
  if (!put_off_at_) put_off_at_ = commands_.line_turns();
  return commands_.line_turns() < *put_off_at_ + kPatience;
}

Task<void> CommandQueue::carry_out(QueuedCommand command) {
  const Device* device = house_.by_address(command.house, command.unit);
  SwitchTarget target{command.house, command.unit, device ? device->key() : std::string()};
  std::string name = device ? device->name : std::string();
  const bool on = command.function == kX10On;
  bool sent = false;
  if (on)
    sent = co_await commands_.turnon(std::move(target), kFullyOn, Source::kQueue);
  else
    sent = co_await commands_.turnoff(std::move(target), Source::kQueue);
  if (sent && !name.empty()) co_await seen_.tell(std::move(name), on);
}

std::optional<QueuedCommand> parse_queue_item(std::string_view item) {
  if (item.size() < 3) return std::nullopt;
  QueuedCommand command{item[0] - '0', std::string(item.substr(1, 1)),
                        to_integer16(item.substr(2, 2)).value_or(0)};
  const Device device{"", "", command.house, command.unit};
  const bool switches = command.function == kX10On || command.function == kX10Off;
  if (!switches || !device.has_address()) return std::nullopt;
  return command;
}

}  // namespace homewarden
