#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "automation/event_record.h"
#include "ui/event_panel.h"

namespace homewarden {

// A device label taken apart: "Hall Fan C12" is "Hall Fan", "C", 12.
struct LabelParts {
  std::string roomdevice;  // without blanks at its end; "" when the label is only an address
  std::string housecode;   // as it is written, "A" to "P" or "a" to "p"
  int unit = 0;            // 1 to 16
};

// Nothing for a text whose last word is no address of the power line. Blanks behind it do not
// count.
std::optional<LabelParts> split_label(std::string_view label);

// The two boxes of a time: "sSet:-1" is "sSet" and "-1", "7:30" is "7" and "30". Without a colon
// all of it is the hour, and the minute is "".
struct TimeParts {
  std::string hour;
  std::string minute;
};
// Never fails: whether the parts are a time is seen when the event is saved.
TimeParts split_time(std::string_view time);

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

// As it stands in the boxes of the panel now.
EventInput input_in(const EventPanel& panel);

// The event, written as the event list wants it ("7" becomes "07", "SSET" becomes "sSet"), or what
// is wrong, in words for a person. Any device with a name and an address will do, whether or not it
// is in the house, and so will an event without a day. A level is 10 to 100, an offset -3 to +3.
using CheckedInput = std::variant<EventRecord, std::string>;
CheckedInput check_input(const EventInput& input);

// "sRise" or "sSet" when the hour box names a sun time, whatever its letter case; else "".
std::string_view sun_name(std::string_view hour);

}  // namespace homewarden
