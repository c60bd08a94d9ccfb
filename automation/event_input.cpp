#include "automation/event_input.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "base/text.h"
#include "core/devices.h"

namespace homewarden {
namespace {

constexpr int kLowestDim = 10;
constexpr int kHighestDim = 100;
constexpr int kFurthestOffset = 3;

std::string_view without_end_blanks(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::optional<int> number_within(std::string_view text, int lowest, int highest) {
  const auto number = to_integer16(text);
  if (!number || *number < lowest || *number > highest) return std::nullopt;
  return number;
}

// "-3" to "+3", "00".
std::string offset_text(int hours) {
  if (hours == 0) return "00";
  return (hours < 0 ? "-" : "+") + std::to_string(std::abs(hours));
}

// A name that could not be read back from the list.
bool spoils_a_line(std::string_view name) {
  const auto is_control = [](char c) { return static_cast<unsigned char>(c) < 0x20; };
  return name.size() > kLongestEventLine / 2 || name.find('~') != std::string_view::npos ||
         std::any_of(name.begin(), name.end(), is_control);
}

std::string upper_case(char letter) {
  return std::string(
      1, letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter);
}

std::string check_device(const EventInput& input, EventRecord& event) {
  if (trim_blanks(input.device).empty()) return "Please choose a device from the list.";
  const auto parts = split_label(input.device);
  if (!parts)
    return "The device \"" + input.device +
           "\" has no address on the power line. Please choose one from the list, or type its "
           "room, "
           "its name and its address, such as A3: house codes are A to P, units 1 to 16.";
  if (trim_blanks(parts->roomdevice).empty())
    return "\"" + input.device +
           "\" is an address without a name. Please type the room and the name of the device "
           "before "
           "it, or choose it from the list.";
  if (spoils_a_line(parts->roomdevice))
    return "The name of the device is too long or has a tilde (~) in it, which the event list "
           "cannot hold. Please choose a device from the list.";
  event.roomdevice = parts->roomdevice;
  event.housecode = upper_case(parts->housecode.front());
  event.unit = std::to_string(parts->unit);
  return "";
}

std::string check_action(const EventInput& input, EventRecord& event) {
  event.action = to_lower(input.action);
  if (event.action == "off") {
    event.dim = " ";
    return "";
  }
  if (event.action != "on") return "Please choose \"on\" or \"off\".";
  const auto level = number_within(replace_all(input.dim, "%", ""), kLowestDim, kHighestDim);
  if (!level) return "Please choose a dim level from 10% to 100%.";
  event.dim = std::to_string(*level);
  return "";
}

std::string check_time(const EventInput& input, EventRecord& event) {
  const std::string_view sun = sun_name(input.hour);
  if (!sun.empty()) {
    const auto offset = number_within(input.minute, -kFurthestOffset, kFurthestOffset);
    if (!offset)
      return "With sRise or sSet the minute box holds the offset in hours. Please choose one from "
             "-3 to +3; 00 is the sun time itself.";
    event.time = std::string(sun) + ":" + offset_text(*offset);
    return "";
  }
  const auto hour = number_within(input.hour, 0, 23);
  if (!hour) return "Please choose an hour from 00 to 23, or sRise or sSet.";
  const bool is_offset = input.minute.find_first_of("+-") != std::string::npos;
  if (is_offset)
    return "An offset of \"" + input.minute +
           "\" hours needs sRise or sSet as the hour. Please choose a minute from 00 to 59.";
  const auto minute = number_within(input.minute, 0, 59);
  if (!minute) return "Please choose a minute from 00 to 59.";
  event.time = two_digits(*hour) + ":" + two_digits(*minute);
  return "";
}

std::string check_frequency(const EventInput& input, EventRecord& event) {
  event.freq = to_lower(input.freq);
  if (event.freq != "once" && event.freq != "daily") return "Please choose \"once\" or \"daily\".";
  return "";
}

std::string day_letters(const std::array<bool, 7>& days) {
  std::string letters;
  for (std::size_t day = 0; day < days.size(); ++day)
    if (days[day]) letters += kDayLetters[day];
  return letters;
}

}  // namespace

std::optional<LabelParts> split_label(std::string_view label) {
  label = without_end_blanks(label);
  const std::string_view code = label.substr(label.find_last_of(' ') + 1);
  if (code.find_first_not_of("0123456789", 1) != std::string_view::npos) return std::nullopt;
  if (code.size() < 2 || code.size() > 3) return std::nullopt;
  Device device{"", "", std::string(code.substr(0, 1)), to_integer16(code.substr(1)).value_or(0)};
  if (!device.has_address()) return std::nullopt;
  const std::string_view name = label.substr(0, label.size() - code.size());
  return LabelParts{std::string(without_end_blanks(name)), std::move(device.house_code),
                    device.unit};
}

TimeParts split_time(std::string_view time) {
  const auto colon = time.find(':');
  if (colon == std::string_view::npos) return {std::string(time), ""};
  return {std::string(time.substr(0, colon)), std::string(time.substr(colon + 1))};
}

EventInput input_in(const EventPanel& panel) {
  EventInput input{panel.lst_eventdevice.text,
                   panel.lst_action.text,
                   panel.lst_dim.text,
                   panel.lst_hour.text,
                   panel.lst_min.text,
                   panel.lst_freq.text,
                   {}};
  for (std::size_t day = 0; day < input.days.size(); ++day)
    input.days[day] = panel.days[day].checked;
  return input;
}

CheckedInput check_input(const EventInput& input) {
  EventRecord event;
  std::string wrong = check_device(input, event);
  if (wrong.empty()) wrong = check_action(input, event);
  if (wrong.empty()) wrong = check_time(input, event);
  if (wrong.empty()) wrong = check_frequency(input, event);
  if (!wrong.empty()) return wrong;
  event.days = day_letters(input.days);
  return event;
}

std::string_view sun_name(std::string_view hour) {
  for (const std::string_view name : {"sRise", "sSet"})
    if (equals_ignoring_case(hour, name)) return name;
  return "";
}

}  // namespace homewarden
