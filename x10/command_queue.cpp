#include "x10/command_queue.h"

#include "base/flag_guard.h"
#include "base/text.h"
#include "core/devices.h"
#include "platform/interface_control.h"

namespace homewarden {
namespace {

constexpr int kFullyOn = 100;

// Every occurrence, letter case ignored.
std::string without_item(std::string queue, const std::string& item) {
  for (;;) {
    const auto found = find_ignoring_case(queue, item);
    if (found == std::string::npos) return queue;
    queue.erase(found, item.size());
  }
}

}  // namespace

CommandQueue::CommandQueue(FrmMain& form, Operations& operations, DeviceCommands& commands,
                           SeenCommands& seen)
    : form_(form), commands_(commands), seen_(seen) {
  form.timerqueue.tick.connect([this, &operations] { operations.start(timerqueue_run()); });
}

Task<void> CommandQueue::timerqueue_run() {
  const std::string queue = form_.txt_queue.text;
  if (form_.sending || running_ || queue.empty()) co_return;
  const FlagGuard running(running_);
  const std::string item = queue.substr(0, queue.find('~'));
  const auto command = parse_queue_item(item);
  if (command && command->function == kX10On) {
    int level = kFullyOn;
    co_await commands_.turnon(command->house, command->unit, level);
  } else if (command && command->function == kX10Off) {
    co_await commands_.turnoff(command->house, command->unit);
  }
  // A last item without its tilde goes too, or it would stay at the front for ever.
  form_.txt_queue.text = form_.txt_queue.text.get() == item
                             ? std::string()
                             : without_item(form_.txt_queue.text, item + "~");
  if (command) co_await seen_.record(command->house, command->unit, command->function);
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
