#include "api/remote_commands.h"

#include <algorithm>
#include <array>
#include <coroutine>
#include <utility>

#include "base/flag_guard.h"
#include "base/text.h"
#include "web/switch_report.h"

namespace homewarden {
namespace {

using State = RemoteCommand::State;

constexpr int kFullyOn = 100;
const char* const kNoDevice = "The device is not in the house any more.";
constexpr std::array<std::string_view, 8> kActs{"on", "off",  "toggle", "level",
                                                "up", "down", "repeat", "event"};

}  // namespace

std::string_view name_of(RemoteAct act) {
  return kActs[static_cast<std::size_t>(act)];
}

std::optional<RemoteAct> remote_act(std::string_view name) {
  const auto* const found = std::find(kActs.begin(), kActs.end(), name);
  const auto place = static_cast<std::size_t>(found - kActs.begin());
  if (place >= static_cast<std::size_t>(RemoteAct::kEvent)) return std::nullopt;
  return static_cast<RemoteAct>(place);
}

// Somebody who waits for the end of a command, for as long as they have patience.
class RemoteCommands::Ending {
 public:
  Ending(RemoteCommands& commands, Pointer command, std::chrono::milliseconds at_most)
      : commands_(commands), command_(std::move(command)), at_most_(at_most) {}
  Ending(const Ending&) = delete;
  Ending& operator=(const Ending&) = delete;
  ~Ending() {
    commands_.endings_.remove(this);
    commands_.loop_.cancel(call_);
  }

  bool await_ready() const { return command_->has_ended(); }
  void await_suspend(std::coroutine_handle<> handle) {
    handle_ = handle;
    commands_.endings_.push_back(this);
    call_after(at_most_);
  }
  void await_resume() const {}

  void look() {
    if (!command_->has_ended() && commands_.takes_more_) return;
    commands_.loop_.cancel(call_);
    call_after(std::chrono::milliseconds(0));
  }

 private:
  void call_after(std::chrono::milliseconds delay) {
    call_ = commands_.loop_.call_after(delay, [this] {
      call_ = 0;
      handle_.resume();
    });
  }

  RemoteCommands& commands_;
  const Pointer command_;
  const std::chrono::milliseconds at_most_;
  std::coroutine_handle<> handle_;
  EventLoop::CallId call_ = 0;
};

RemoteCommands::RemoteCommands(StatusBar& status, Operations& operations, EventLoop& loop,
                               HouseIndex& house, const DeviceIds& ids, DeviceState& state,
                               DeviceCommands& commands, std::string run)
    : status_(status),
      operations_(operations),
      loop_(loop),
      house_(house),
      ids_(ids),
      state_(state),
      commands_(commands),
      run_(std::move(run)) {
  house.changed.connect([this] { drop_strangers(); });
}

RemoteCommands::~RemoteCommands() = default;

RemoteCommands::Answer RemoteCommands::ask(const Device& device, RemoteAct act, int level,
                                           const std::string& from) {
  RemoteCommand command;
  command.device = ids_.of(device.key());
  command.act = act;
  command.from = from;
  if (act != RemoteAct::kUp && act != RemoteAct::kDown) {
    command.order = order_of(device, act, level);
    if (!command.order) return Refusal::kNothingToRepeat;
  }
  return add(std::move(command));
}

RemoteCommands::Answer RemoteCommands::ask_event(const Device& device, DeviceOrder order,
                                                 const std::string& from) {
  RemoteCommand command;
  const Device* known = house_.by_room_and_name(device.roomdevice());
  if (known != nullptr) command.device = ids_.of(known->key());
  command.act = RemoteAct::kEvent;
  command.order = order;
  command.address = device;
  command.from = from;
  return add(std::move(command));
}

std::optional<DeviceOrder> RemoteCommands::order_of(const Device& device, RemoteAct act,
                                                    int level) const {
  switch (act) {
    case RemoteAct::kOff:
      return DeviceOrder{false, 0};
    case RemoteAct::kToggle:
      return is_to_be_on(device) ? DeviceOrder{false, 0} : DeviceOrder{true, kFullyOn};
    case RemoteAct::kLevel:
      return level > 0 ? DeviceOrder{true, level} : DeviceOrder{false, 0};
    case RemoteAct::kRepeat:
      return state_.not_sent(device.key());
    default:
      return DeviceOrder{true, kFullyOn};
  }
}

bool RemoteCommands::is_to_be_on(const Device& device) const {
  const std::string key = device.key();
  const std::string& id = ids_.of(key);
  const auto last = std::find_if(waiting_.rbegin(), waiting_.rend(), [&id](const Shared& one) {
    return one->device == id && one->order;  // a step leaves it as it is
  });
  if (last != waiting_.rend()) return (*last)->order->on;
  const auto& on_its_way = commands_.on_its_way();
  if (on_its_way && on_its_way->order && equals_ignoring_case(on_its_way->key, key))
    return on_its_way->order->on;
  return state_.getlaststatus(key);
}

std::optional<RemoteCommands::Refusal> RemoteCommands::no_place(const RemoteCommand& command,
                                                                bool replaces) const {
  if (!takes_more_) return Refusal::kEnding;
  if (replaces) return std::nullopt;
  const auto own = std::count_if(waiting_.begin(), waiting_.end(), [&command](const Shared& other) {
    return other->from == command.from;
  });
  // Whoever has nothing waiting gets a place when others have taken all of them.
  if (waiting_.size() >= (own == 0 ? kMost + kMost / 2 : kMost)) return Refusal::kTooMany;
  if (static_cast<std::size_t>(own) >= kMostOfOne) return Refusal::kTooManyOfOne;
  return std::nullopt;
}

RemoteCommands::Answer RemoteCommands::add(RemoteCommand command) {
  Shared* const place = place_of_older_level(command);
  if (const auto refusal = no_place(command, place != nullptr)) return *refusal;
  command.id = run_ + "-" + std::to_string(++last_);
  command.asked = loop_.system_time();
  auto shared = std::make_shared<RemoteCommand>(std::move(command));
  if (place != nullptr) {
    const Shared older = std::exchange(*place, shared);
    set(older, State::kDropped, "A newer level took its place.");
  } else {
    waiting_.push_back(shared);
  }
  changed(*shared);
  if (!working_) operations_.start(work_off());
  return Pointer(shared);
}

// Only the last command of the device, so that what was asked between two levels is not lost. Where
// it stands among those that wait: a slider that is moved on and on does not wait anew each time.
RemoteCommands::Shared* RemoteCommands::place_of_older_level(const RemoteCommand& by) {
  if (by.act != RemoteAct::kLevel) return nullptr;
  const auto last = std::find_if(waiting_.rbegin(), waiting_.rend(),
                                 [&by](const Shared& other) { return other->device == by.device; });
  return last == waiting_.rend() || (*last)->act != RemoteAct::kLevel ? nullptr : &*last;
}

RemoteCommands::Pointer RemoteCommands::find(const std::string& id) const {
  for (const Pointer& command : all())
    if (command->id == id) return command;
  return nullptr;
}

std::vector<RemoteCommands::Pointer> RemoteCommands::all() const {
  std::vector<Pointer> commands(ended_.begin(), ended_.end());
  if (on_the_line_) commands.push_back(on_the_line_);
  commands.insert(commands.end(), waiting_.begin(), waiting_.end());
  return commands;
}

RemoteCommands::Pointer RemoteCommands::last_waiting(const std::string& device) const {
  const auto last = std::find_if(waiting_.rbegin(), waiting_.rend(), [&device](const Shared& one) {
    return !device.empty() && one->device == device;
  });
  return last == waiting_.rend() ? nullptr : *last;
}

Task<void> RemoteCommands::ended(Pointer command, std::chrono::milliseconds at_most) {
  co_await Ending(*this, std::move(command), at_most);
}

void RemoteCommands::take_no_more() {
  takes_more_ = false;
  while (!waiting_.empty()) {
    const Shared command = std::move(waiting_.front());
    waiting_.pop_front();
    set(command, State::kDropped, "The program is ending.");
  }
  for (Ending* ending : endings_) ending->look();
}

void RemoteCommands::set(const Shared& command, State state, std::string detail) {
  command->state = state;
  command->detail = std::move(detail);
  if (command->has_ended()) {
    command->ended = loop_.system_time();
    ended_.push_back(command);
    if (ended_.size() > kKept) ended_.pop_front();
    for (Ending* ending : endings_) ending->look();
  }
  changed(*command);
}

// What a device is called now is looked up when its turn comes; one that is no more needs none.
void RemoteCommands::drop_strangers() {
  const auto is_stranger = [this](const Shared& command) {
    return !command->address && ids_.by_id(command->device) == nullptr;
  };
  std::vector<Shared> strangers;
  std::copy_if(waiting_.begin(), waiting_.end(), std::back_inserter(strangers), is_stranger);
  std::erase_if(waiting_, is_stranger);
  for (const Shared& command : strangers) set(command, State::kDropped, kNoDevice);
}

// Each is taken when it has the line. The second of pause behind a command does not hold up the
// next one.
Task<void> RemoteCommands::work_off() {
  const FlagGuard working(working_);
  while (!waiting_.empty()) {
    LineTurn turn = co_await commands_.take_line(Source::kWeb);
    if (waiting_.empty()) co_return;
    on_the_line_ = std::move(waiting_.front());
    waiting_.pop_front();
    operations_.start(carry_out(std::move(turn), on_the_line_));
  }
}

Task<void> RemoteCommands::carry_out(LineTurn turn, Shared command) {
  SwitchTarget target;
  if (const Device* device = ids_.by_id(command->device); device != nullptr && !command->address)
    target = SwitchTarget::of(*device);
  else if (command->address)
    target = {command->address->house_code, command->address->unit,
              without_blanks(command->address->roomdevice())};
  if (target.house_code.empty()) {  // the ids have been read anew since
    on_the_line_.reset();
    set(command, State::kDropped, kNoDevice);
    co_return;
  }
  if (!command->from.empty()) target.asked_by = " (from " + command->from + ")";
  set(command, State::kSending);
  if (command->order) {
    co_await send_order(std::move(turn), std::move(target), std::move(command));
    co_return;
  }
  bool sent = false;
  if (command->act == RemoteAct::kUp)
    sent = co_await commands_.step_up(std::move(turn), std::move(target));
  else
    sent = co_await commands_.step_down(std::move(turn), std::move(target));
  on_the_line_.reset();
  set(command, sent ? State::kDone : State::kNotSent);
}

Task<void> RemoteCommands::send_order(LineTurn turn, SwitchTarget target, Shared command) {
  const DeviceOrder order = *command->order;
  const bool brings_up = command->act == RemoteAct::kLevel && order.on && order.level == kFullyOn &&
                         state_.getlaststatus(target.key);
  SwitchTarget where = target;
  const bool sent = co_await commands_.send_and_record(std::move(turn), std::move(where), order,
                                                       Source::kWeb, brings_up);
  on_the_line_.reset();
  if (sent) tell_sent(*command, target);
  set(command, sent ? State::kDone : State::kNotSent);
  co_await commands_.finish(std::move(target), order);
}

// A level is told by what sends it.
void RemoteCommands::tell_sent(const RemoteCommand& command, const SwitchTarget& target) {
  const DeviceOrder& order = *command.order;
  if (order.on && order.level != kFullyOn) return;
  status_.panel2 = switch_report(target, order.on, loop_.local_time());
}

}  // namespace homewarden
