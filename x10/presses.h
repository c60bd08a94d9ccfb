#pragma once

#include <deque>
#include <optional>
#include <string>

#include "base/operations.h"
#include "base/signal.h"
#include "base/task.h"
#include "core/house_index.h"
#include "x10/device_commands.h"

namespace homewarden {

// What a person presses in the window, carried out one after the other: a press while another
// command is on its way waits for its turn, and none is lost.
class Presses {
 public:
  Presses(Operations& operations, HouseIndex& house, DeviceState& state, DeviceCommands& commands);

  // The device is to be what it is not: what counts is the last press that waits or is being sent,
  // else what is recorded. Returns at once, as do the others: what becomes of the press is
  // recorded.
  void toggle(const Device& device);
  // A level from 0 to 100. A press at another level that still waits, the last one for the device,
  // is replaced. 100 brings the lamp up fully, also one that is on.
  void set_level(const Device& device, int level);
  // Sends an order again, behind the presses that wait. It is never merged with one of them.
  void repeat(const Device& device, DeviceOrder order);

  // The device has become another one, of another name or address: what waits is for that.
  void follow(const Device& from, const Device& to);

  // Whether a press of the device waits. False as well for one that is being sent. The key is one
  // of Device::key(), with its letter case.
  bool waits(const std::string& device_key) const;
  // The level that a slider asked of the device, as long as that waits or is being sent; nothing
  // when the last press of the device was none of a slider.
  std::optional<int> wished_level(const std::string& device_key);

  // What the last press of the device asks for, as long as it waits or is being sent.
  std::optional<DeviceOrder> wished(const std::string& device_key);

  // A press of the device with this key began to wait or got its turn. A device that has gone
  // meanwhile is passed over.
  Signal<const std::string&> changed;

 private:
  struct Press {
    Device device;
    std::string key;
    DeviceOrder order;
    bool is_level = false;
    LineTurns::Moment since = 0;
  };

  void add(const Device& device, DeviceOrder order, bool is_level);
  Press* last_of(const std::string& key);
  Task<void> work_off();
  Task<void> carry_out(LineTurn turn, Press press);

  Operations& operations_;
  HouseIndex& house_;
  DeviceState& state_;
  DeviceCommands& commands_;
  std::deque<Press> waiting_;
  std::optional<Press> on_the_line_;  // until it is recorded
  bool working_ = false;
};

}  // namespace homewarden
