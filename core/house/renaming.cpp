#include "core/house/renaming.h"

#include <algorithm>

#include "automation/macro_line.h"
#include "base/lines.h"
#include "base/text.h"

namespace homewarden {
namespace {

std::string short_code(const Device& device) {
  return device.house_code + std::to_string(device.unit);
}

// Takes the text before the next tilde off the line.
std::string_view take_field(std::string_view& line) {
  const std::size_t end = line.find('~');
  const std::string_view field = line.substr(0, end);
  line = end == std::string_view::npos ? std::string_view() : line.substr(end + 1);
  return field;
}

}  // namespace

Renaming::Renaming(HouseRemoval::Item item, std::string new_room, std::string_view room_list)
    : lines_of_(item, room_list), old_room_(item.room), new_room_(std::move(new_room)) {
  LineReader reader(room_list);
  while (const auto line = reader.next())
    if (!lines_of_.takes_room_line(*line)) others_.emplace_back(*line);
}

Renaming Renaming::of_device(const Device& from, const Device& to, std::string_view room_list) {
  Renaming renaming({from.room, from.name, from.tree_key()}, "", room_list);
  if (renaming.lines() > 0) renaming.steps_.push_back({from, to});
  return renaming;
}

Renaming Renaming::of_room(const std::string& from, const std::string& to,
                           std::string_view room_list) {
  Renaming renaming({from, "", ""}, to, room_list);
  LineReader reader(room_list);
  while (const auto line = reader.next()) {
    if (!renaming.lines_of_.takes_room_line(*line)) continue;
    const auto entry = parse_list_line(*line);
    if (!entry || !entry->device) continue;
    Step step{*entry->device, *entry->device};
    step.to.room = to;
    renaming.steps_.push_back(std::move(step));
  }
  return renaming;
}

std::optional<std::string> Renaming::room_line(std::string_view line) const {
  if (!lines_of_.takes_room_line(line)) return std::nullopt;
  if (!new_room_.empty()) return new_room_ + std::string(line.substr(line.find('~')));
  const Device& to = steps_.front().to;
  return to.room + "~" + to.name + "~" + to.code();
}

// The one at the address, or else the first of the name.
const Renaming::Step* Renaming::step_of(std::string_view roomdevice,
                                        std::string_view address) const {
  const Step* of_name = nullptr;
  for (const Step& step : steps_) {
    if (!equals_ignoring_case(step.from.roomdevice(), roomdevice)) continue;
    if (equals_ignoring_case(short_code(step.from), address)) return &step;
    if (!of_name) of_name = &step;
  }
  return of_name;
}

std::optional<std::string> Renaming::event(std::string_view line) const {
  if (!lines_of_.takes_event(line)) return std::nullopt;
  std::string_view rest = line;
  const std::string_view name = take_field(rest);
  const std::string code(take_field(rest));
  const std::string unit(take_field(rest));
  const Step* step = step_of(name, code + unit);
  if (!step) return std::nullopt;
  const bool at_its_address = equals_ignoring_case(short_code(step->from), code + unit);
  return step->to.roomdevice() + "~" + (at_its_address ? step->to.code() : code + "~" + unit) +
         "~" + std::string(rest);
}

std::optional<std::string> Renaming::macro(std::string_view line) const {
  if (!lines_of_.takes_macro(line)) return std::nullopt;
  auto macro = parse_macro(line);
  if (!macro) return std::nullopt;
  for (MacroEnd* end : {&macro->trigger, &macro->target}) {
    const Step* step = step_of(end->name, end->code());
    if (!step || !equals_ignoring_case(short_code(step->from), end->code())) continue;
    end->name = step->to.roomdevice();
    end->house_code = step->to.house_code;
    end->unit = step->to.unit;
    end->odd_code.clear();
  }
  return macro_line(*macro);
}

}  // namespace homewarden
