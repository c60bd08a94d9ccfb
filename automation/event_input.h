#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "automation/event_record.h"

namespace homewarden {

// The address at the end of a device label: "Hall Fan C12" is "Hall Fan", "C", 12. What it has not
// is empty, or 0.
struct LabelParts {
  std::string roomdevice;
  std::string housecode;
  int unit = 0;
};
LabelParts split_label(std::string_view label);

// What a person has put into the boxes of the event editor.
struct EventInput {
  std::string device;  // a device label
  std::string action;
  std::string dim;  // "40%"
  std::string hour;
  std::string minute;
  std::string freq;
  std::array<bool, 7> days{};  // Monday first
};

// The event, written as the event list wants it ("7" becomes "07", "SSET" becomes "sSet"), or what
// is wrong, in words for a person. `devices` are the labels that may be chosen; `edited` is the
// event that is being replaced, whose device may be kept though it is not among them any more.
using CheckedInput = std::variant<EventRecord, std::string>;
CheckedInput check_input(const EventInput& input, const std::vector<std::string>& devices,
                         const std::optional<EventRecord>& edited);

// "sRise" or "sSet" when the hour box names a sun time, whatever its letter case; else "".
std::string_view sun_name(std::string_view hour);

}  // namespace homewarden
