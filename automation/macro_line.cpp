#include "automation/macro_line.h"

#include <algorithm>
#include <utility>

#include "automation/event_input.h"
#include "base/text.h"
#include "core/lines_of_key.h"
#include "platform/interface_control.h"

namespace homewarden {
namespace {

struct Words {
  std::string_view choice;
  std::string_view in_line;
  int function;
};

constexpr Words kEvents[] = {
    {"On", "turns on", kX10On}, {"Off", "turns off", kX10Off}, {"Dim", "turns dim", kX10Dim}};
constexpr Words kActions[] = {{"Turn On", "Turn~On~", kX10On}, {"Turn Off", "Turn~Off~", kX10Off}};

// An address only as this program writes it, so that code() gives back the same text.
MacroEnd end_of_code(std::string_view code) {
  const auto parts = split_label(code);
  MacroEnd end;
  if (parts && parts->housecode + std::to_string(parts->unit) == code) {
    end.house_code = parts->housecode;
    end.unit = parts->unit;
  } else {
    end.odd_code = code;
  }
  return end;
}

std::optional<MacroEnd> end_of_label(std::string_view label) {
  auto parts = split_label(label);
  if (!parts) return std::nullopt;
  return MacroEnd{std::move(parts->housecode), parts->unit, "", std::move(parts->roomdevice), 0};
}

std::optional<int> function_of(std::string_view text, const auto& words) {
  for (const Words& entry : words)
    if (entry.choice == text) return entry.function;
  return std::nullopt;
}

std::string_view words_of(int function) {
  for (const Words& entry : kEvents)
    if (entry.function == function) return entry.in_line;
  return "";
}

// "Dimms" is what older lists have for the dim trigger.
int trigger_function(std::string_view line) {
  if (contains_ignoring_case(line, "turns~on")) return kX10On;
  if (contains_ignoring_case(line, "turns~off")) return kX10Off;
  for (const std::string_view dim : {"turns~dim", "~Dimms~"})
    if (contains_ignoring_case(line, dim)) return kX10Dim;
  return 0;
}

std::string with_blanks(std::string_view text) {
  return replace_all(text, "~", " ");
}

// What stands between the trigger's code and its words.
std::string trigger_name(std::string_view rest) {
  auto end = std::string_view::npos;
  for (const std::string_view words : {"~turns~", "~Dimms~"})
    end = std::min(end, find_ignoring_case(rest, words));
  return end == std::string_view::npos ? "" : with_blanks(rest.substr(0, end));
}

}  // namespace

std::string MacroEnd::code() const {
  return has_address() ? house_code + std::to_string(unit) : odd_code;
}

std::optional<Macro> macro_of_choices(std::string_view trigger_label, std::string_view event,
                                      std::string_view target_label, std::string_view action) {
  auto trigger = end_of_label(trigger_label);
  auto target = end_of_label(target_label);
  const auto trigger_function = function_of(event, kEvents);
  const auto target_function = function_of(action, kActions);
  if (!trigger || !target || !trigger_function || !target_function) return std::nullopt;
  trigger->function = *trigger_function;
  target->function = *target_function;
  return Macro{std::move(*trigger), std::move(*target)};
}

std::string macro_line(const Macro& macro) {
  const char* const action = macro.target.function == kX10On ? "Turn On" : "Turn Off";
  const std::string text = "When " + macro.trigger.code() + " " + macro.trigger.name + " " +
                           std::string(words_of(macro.trigger.function)) + " " + action + " " +
                           macro.target.code() + " " + macro.target.name;
  return replace_all(text, " ", "~");
}

std::optional<Macro> parse_macro(std::string_view line) {
  const auto first = line.find('~');
  if (first == std::string_view::npos) return std::nullopt;
  const auto second = line.find('~', first + 1);
  if (second == std::string_view::npos) return std::nullopt;

  Macro macro;
  macro.trigger = end_of_code(line.substr(first + 1, second - first - 1));
  macro.trigger.function = trigger_function(line);
  macro.trigger.name = trigger_name(line.substr(second + 1));
  auto action_end = std::string_view::npos;
  auto action_at = std::string_view::npos;
  int target_function = 0;
  for (const Words& action : kActions) {
    const auto at = find_ignoring_case(line, action.in_line);
    if (at >= action_at) continue;
    action_at = at;
    action_end = at + action.in_line.size();
    target_function = action.function;
  }
  if (macro.trigger.function == 0 || action_at == std::string_view::npos) return std::nullopt;
  const std::string_view target = line.substr(action_end);
  const auto code_end = target.find('~');
  macro.target = end_of_code(target.substr(0, code_end));
  macro.target.function = target_function;
  if (code_end != std::string_view::npos)
    macro.target.name = with_blanks(target.substr(code_end + 1));
  return macro;
}

std::string shown_macro(std::string_view line) {
  return with_blanks(line);
}

// A line written by hand may have blanks of its own.
ListFile::Choice lines_of_macro(std::string_view content, std::string_view shown) {
  const auto is_key = [](std::string_view line, std::string_view key) {
    return equals_ignoring_case(with_blanks(line), with_blanks(key));
  };
  return lines_of_key(content, replace_all(shown, " ", "~"), is_key);
}

std::string event_words(const MacroEnd& end) {
  return std::string(words_of(end.function));
}

std::string in_words(const MacroEnd& end) {
  return (end.name.empty() ? "" : end.name + " ") + end.code() + " " + event_words(end);
}

}  // namespace homewarden
