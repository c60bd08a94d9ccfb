#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "base/signal.h"
#include "core/module1.h"
#include "platform/clock.h"

namespace homewarden {

// Where a command comes from.
enum class Source { kWindow, kEvent, kQueue, kWeb, kPowerLine, kVoice };
inline constexpr std::size_t kSources = 6;
// As programs call it: "window", "event", "macro", "web", "power_line" or "voice".
std::string_view name_of(Source source);

// What a device is told: off, or on at a level from 0 to 100 percent.
struct DeviceOrder {
  bool on = false;
  int level = 100;  // of no meaning when off

  bool operator==(const DeviceOrder&) const = default;
};

// What was recorded of a device, and why.
struct StateChange {
  std::string key;  // of the device, without blanks
  DeviceOrder state;
  Source source = Source::kWindow;
  bool sent = true;  // false when the command did not get through
};

// When and by what the state of a device was recorded.
struct LastChange {
  SystemTime at;
  Source source = Source::kWindow;

  bool operator==(const LastChange&) const = default;
};

// The remembered state of every device, kept where the service sees it too. `keyname` is the room
// name followed by the device name, with or without their blanks. What is recorded is told to
// whoever listens; nobody needs to ask twice.
class DeviceState {
 public:
  DeviceState(Module1& module1, const Clock& clock) : module1_(module1), clock_(clock) {}

  // Records what a command did, also one that could not be sent: the device then counts as not
  // reached until a command to it gets through. An "off" is stored with the level "20".
  // It is recorded at once and on the disk a little later: Module1::stored() waits for it.
  void setstatus(const std::string& keyname, DeviceOrder state, Source source, bool sent = true);

  // Whether the device is recorded as on. False for a device of which nothing is recorded.
  bool getlaststatus(const std::string& keyname) const;

  // The level recorded, in percent: 100 when there is none or it is no number, 20 for a device that
  // is off.
  int level(const std::string& keyname) const;

  // The order that did not reach the device; nothing when the last one did.
  std::optional<DeviceOrder> not_sent(const std::string& keyname) const;

  // When what is recorded was recorded last, the same state again or another one, by whichever
  // process. Nothing when nobody knows: a hand has changed the store, or a version of the program
  // that did not keep it.
  std::optional<LastChange> last_change(const std::string& keyname) const;

  // Whether anything at all is recorded of the device.
  bool is_recorded(const std::string& keyname) const;

  // Removes what is recorded of a device that is no more. Nobody is told; nothing happens for one
  // of which nothing is recorded.
  void forget(const std::string& keyname);

  // All that is recorded of a device, as it is stored; "" for what is not there.
  struct Record {
    std::string state;
    std::string level;
    std::string not_sent;
    std::string changed;
  };
  Record record_of(const std::string& keyname) const;
  // Records it again, and nothing of what is not there. Nobody is told.
  void put_back(const std::string& keyname, const Record& record);

  // Records of one device what is recorded of another, also that nothing is. Nobody is told.
  void copy(const std::string& from, const std::string& to);
  // From now on what is recorded under the first key, by a command that was on its way when the
  // device got its new name, goes to the second one; until a device has the first key again.
  void follow(const std::string& from, const std::string& to);
  void stop_following(const std::function<bool(const std::string&)>& is_a_device);

  Signal<const StateChange&> changed;
  // Another process has recorded something: whoever shows states looks at all of them.
  Signal<> changed_elsewhere;

 private:
  Module1& module1_;
  const Clock& clock_;
  std::map<std::string, std::string> renamed_;  // by the lower-case key of before
};

}  // namespace homewarden
