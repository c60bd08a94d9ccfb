#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/operations.h"
#include "base/signal.h"
#include "base/task.h"
#include "core/device_ids.h"
#include "core/house_index.h"
#include "platform/event_loop.h"
#include "ui/controls.h"
#include "x10/device_commands.h"

namespace homewarden {

// What somebody asks for over the network.
enum class RemoteAct { kOn, kOff, kToggle, kLevel, kUp, kDown, kRepeat, kEvent };
// As programs write it: "on", "off", "toggle", "level", "up", "down", "repeat", "event".
std::string_view name_of(RemoteAct act);
std::optional<RemoteAct> remote_act(std::string_view name);  // nothing for "event" too

// One command, from the question to what has become of it.
struct RemoteCommand {
  enum class State { kWaiting, kSending, kDone, kNotSent, kDropped };

  std::string id;      // never used twice, in other runs of the program neither
  std::string device;  // by DeviceIds; "" for an address that no device of the house has
  RemoteAct act = RemoteAct::kOn;
  std::optional<DeviceOrder> order;  // nothing for a step
  std::optional<Device> address;     // where to, without a device
  std::string from;                  // the asker's address
  State state = State::kWaiting;
  SystemTime asked;
  std::optional<SystemTime> ended;
  std::string detail;  // why it was dropped, for a person

  bool has_ended() const { return state > State::kSending; }
};

// What programs and pages ask for, carried out one after the other in the order in which it came.
// Among all who switch they have the turns of the web (x10/line_turns.h). None is lost: whoever
// asked can look what has become of it, until kKept others have ended after it.
class RemoteCommands {
 public:
  static constexpr std::size_t kMostOfOne = 32;  // that wait, of one address in the network
  static constexpr std::size_t kMost = 128;
  static constexpr std::size_t kKept = 256;

  // `run` tells the ids of this run of the program from those of others.
  RemoteCommands(StatusBar& status, Operations& operations, EventLoop& loop, HouseIndex& house,
                 const DeviceIds& ids, DeviceState& state, DeviceCommands& commands,
                 std::string run);
  ~RemoteCommands();

  using Pointer = std::shared_ptr<const RemoteCommand>;
  enum class Refusal { kTooManyOfOne, kTooMany, kNothingToRepeat, kEnding };
  using Answer = std::variant<Pointer, Refusal>;

  // Returns at once. The device must be of the house and have an address. `level` counts for kLevel
  // alone, 0 to 100; 0 is off. A level takes the place of one that is the last command waiting for
  // the device, whoever asked for that, and is never one too many. A toggle makes of the device
  // what it is not to be by the last command that waits and is no step, else by the one on its way
  // from anybody, else by what is recorded.
  Answer ask(const Device& device, RemoteAct act, int level, const std::string& from);
  // An order of an event; `device` is the address, and need not be of the house.
  Answer ask_event(const Device& device, DeviceOrder order, const std::string& from);

  // Nullptr for one that is not kept any more, or never was.
  Pointer find(const std::string& id) const;
  // The ended ones, oldest first, then the one on the line and those that wait.
  std::vector<Pointer> all() const;
  // The last command of a device that waits; nullptr for none.
  Pointer last_waiting(const std::string& device) const;
  // The one on the line; nullptr when there is none.
  Pointer on_the_line() const { return on_the_line_; }

  // Waits until it has ended, for as long at most, and not beyond take_no_more(): behind that
  // nobody may be there any more to take an answer to the network.
  Task<void> ended(Pointer command, std::chrono::milliseconds at_most);

  // For the end: those that wait are dropped, others are refused. The one on the line is finished.
  void take_no_more();

  // One was taken, or has another state.
  Signal<const RemoteCommand&> changed;

 private:
  class Ending;
  using Shared = std::shared_ptr<RemoteCommand>;

  Answer add(RemoteCommand command);
  std::optional<Refusal> no_place(const RemoteCommand& command, bool replaces) const;
  std::optional<DeviceOrder> order_of(const Device& device, RemoteAct act, int level) const;
  bool is_to_be_on(const Device& device) const;
  Shared* place_of_older_level(const RemoteCommand& by);
  void set(const Shared& command, RemoteCommand::State state, std::string detail = {});
  void drop_strangers();
  Task<void> work_off();
  Task<void> carry_out(LineTurn turn, Shared command);
  Task<void> send_order(LineTurn turn, SwitchTarget target, Shared command);
  void tell_sent(const RemoteCommand& command, const SwitchTarget& target);

  StatusBar& status_;
  Operations& operations_;
  EventLoop& loop_;
  HouseIndex& house_;
  const DeviceIds& ids_;
  DeviceState& state_;
  DeviceCommands& commands_;
  const std::string run_;
  std::uint64_t last_ = 0;
  std::deque<Shared> waiting_;
  Shared on_the_line_;
  std::deque<Shared> ended_;
  std::list<Ending*> endings_;
  bool working_ = false;
  bool takes_more_ = true;
};

}  // namespace homewarden
