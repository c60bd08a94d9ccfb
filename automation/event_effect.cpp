#include "automation/event_effect.h"

#include "automation/due_time.h"
#include "base/text.h"

namespace homewarden {
namespace {

std::string what_is_wrong_with_device(const std::string& name, const std::string& house_code,
                                      int unit, const HouseIndex& house) {
  const std::string address = house_code + std::to_string(unit);
  if (house.by_label(name + " " + address)) return "";
  const Device* device = house.by_room_and_name(name);
  if (!device) device = house.by_key(name);  // names with blanks at their end
  if (!device) return name + " " + address + " is not in the house.";
  if (device->unit == unit && equals_ignoring_case(device->house_code, house_code)) return "";
  return name + " has the address " + device->house_code + std::to_string(device->unit) +
         " in the house, not " + address + ".";
}

// Names in a macro are for people: without one its address alone is looked for.
std::string what_is_wrong_with_end(const MacroEnd& end, const HouseIndex& house) {
  if (!end.has_address()) return "\"" + end.odd_code + "\" is no address.";
  if (!end.name.empty())
    return what_is_wrong_with_device(end.name, end.house_code, end.unit, house);
  const Device* device = house.by_address(end.house_code, end.unit);
  return device && device->unit == end.unit ? "" : end.code() + " is not in the house.";
}

}  // namespace

std::string what_is_wrong_with(const EventRecord& event, const HouseIndex& house) {
  const std::string_view why = why_never_run(event);
  if (!why.empty()) return "This event never runs: " + std::string(why) + ".";
  return what_is_wrong_with_device(event.roomdevice, event.housecode,
                                   to_integer16(event.unit).value_or(0), house);
}

std::string what_is_wrong_with(const Macro& macro, const HouseIndex& house) {
  const std::string wrong = what_is_wrong_with_end(macro.trigger, house);
  return wrong.empty() ? what_is_wrong_with_end(macro.target, house) : wrong;
}

}  // namespace homewarden
