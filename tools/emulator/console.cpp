#include "tools/emulator/console.h"

#include <algorithm>
#include <charconv>
#include <sstream>

#include "platform/interface_control.h"

namespace homewarden::emulator {

namespace {

constexpr int kExtendedCode = 7;

// The whole word as a number; nothing else may stand in it.
template <class Number, class... Format>
std::optional<Number> parse_number(const std::string& word, Format... format) {
  Number value{};
  const char* const end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, value, format...);
  if (error != std::errc{} || stop != end) return std::nullopt;
  return value;
}

std::optional<int> parse_house(const std::string& word) {
  if (word.size() != 1) return std::nullopt;
  const auto address = cm11::parse_address(word + "1");
  if (!address) return std::nullopt;
  return address->house;
}

std::optional<int> parse_function(const std::string& word) {
  constexpr std::array<std::string_view, 9> kWords = {
      "all-units-off", "all-lights-on",  "on",       "off", "dim",
      "bright",        "all-lights-off", "extended", "hail"};
  const auto found = std::find(kWords.begin(), kWords.end(), word);
  if (found == kWords.end()) return std::nullopt;
  return static_cast<int>(found - kWords.begin());
}

// Fills in what the function needs besides its name; false when it is not there or out of range.
bool add_arguments(const Words& arguments, int unit, Transmission& what) {
  if (what.code == kX10Dim || what.code == kX10Bright) {
    if (arguments.size() != 1) return false;
    const auto steps = parse_number<int>(arguments[0]);
    if (!steps || *steps < 1 || *steps > cm11::kDimSteps) return false;
    what.steps = *steps;
    return true;
  }
  if (what.code == kExtendedCode) {
    if (arguments.size() != 2) return false;
    what.extended = std::string(1, static_cast<char>(cm11::line_code(unit - 1)));
    for (const auto& argument : arguments) {
      const auto byte = parse_number<int>(argument, 16);
      if (!byte || *byte < 0 || *byte > 0xFF) return false;
      what.extended += static_cast<char>(*byte);
    }
    return true;
  }
  return arguments.empty();
}

std::string list_faults(const FaultBox& faults) {
  std::ostringstream text;
  for (int i = 0; i < kFaultCount; ++i) {
    const Fault fault = fault_at(i);
    text << to_text(fault) << ": " << description(fault) << "; happened " << faults.happened(fault)
         << ", to come " << faults.pending(fault) << ", probability " << faults.probability(fault)
         << '\n';
  }
  std::string lines = text.str();
  lines.pop_back();
  return lines;
}

}  // namespace

Words split_words(std::string_view line) {
  std::istringstream stream{std::string(line)};
  Words words;
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

std::string change_faults(const Words& words, FaultBox& faults) {
  if (words.size() == 1 && words[0] == "list") return list_faults(faults);
  if (words.size() == 1 && words[0] == "off") {
    faults.clear();
    return "no faults";
  }
  if (words.empty() || words.size() > 2) return "fault: say NAME [count|probability], list or off";
  const std::string& amount = words.size() == 2 ? words[1] : "1";
  const auto fault = parse_fault(words[0]);
  if (!fault && words[0] != "all") return "fault: there is no fault " + words[0];

  // A whole number counts, one with a point is a probability.
  if (const auto count = parse_number<int>(amount); count && *count > 0 && fault) {
    faults.inject(*fault, *count);
    return words[0] + ": the next " + amount;
  }
  const auto probability = parse_number<double>(amount, std::chars_format::fixed);
  const bool point = amount.find('.') != std::string::npos;
  if (!probability || !point || *probability < 0 || *probability > 1)
    return "fault: " + amount + " is neither a count nor a probability from 0.0 to 1.0";
  if (fault)
    faults.set_probability(*fault, *probability);
  else
    faults.set_all_probabilities(*probability);
  return words[0] + ": probability " + amount;
}

std::optional<std::vector<Transmission>> parse_remote(const Words& words) {
  if (words.empty()) return std::nullopt;
  std::vector<Transmission> keys;
  const auto address = cm11::parse_address(words[0]);
  const auto house = address ? address->house : parse_house(words[0]);
  if (!house) return std::nullopt;
  if (address) keys.push_back({*house, false, address->unit, 0, {}});
  if (words.size() > 1) {
    const auto function = parse_function(words[1]);
    if (!function || (*function == kExtendedCode && !address)) return std::nullopt;
    Transmission key{*house, true, *function, 0, {}};
    const Words arguments(words.begin() + 2, words.end());
    if (!add_arguments(arguments, address ? address->unit : 1, key)) return std::nullopt;
    keys.push_back(key);
  }
  if (keys.empty()) return std::nullopt;
  return keys;
}

std::string show(const Words& words, const Modules& modules) {
  const auto only = words.empty() ? std::nullopt : cm11::parse_address(words[0]);
  const auto house = words.empty() || only ? std::nullopt : parse_house(words[0]);
  if (!words.empty() && !only && !house) return "show: say an address, a house or nothing";
  std::string text;
  for (int i = 0; i < 256; ++i) {
    const cm11::Address address{i / 16, i % 16 + 1};
    const auto& module = modules.at(address);
    if (module.type == ModuleType::kNone || (only && address != *only)) continue;
    if (house && address.house != *house) continue;
    if (!only && !house && module.name.empty() && !module.on) continue;
    if (!text.empty()) text += '\n';
    text += cm11::to_text(address);
    text += module.type == ModuleType::kLamp ? " lamp" : " appliance";
    if (!module.name.empty()) text += " (" + module.name + ")";
    text += ": " + module.text();
  }
  return text.empty() ? "nothing is on" : text;
}

std::string_view console_help() {
  return "show [ADDRESS|HOUSE]                    modules that are on, or those named\n"
         "remote ADDRESS [on|off]                 keys of a remote control\n"
         "remote ADDRESS dim|bright STEPS         by 1 to 22 steps\n"
         "remote ADDRESS extended DATA COMMAND    two bytes in hexadecimal\n"
         "remote HOUSE FUNCTION                   on, off, dim, bright, hail for what is "
         "addressed;\n"
         "                                        all-units-off, all-lights-on, all-lights-off\n"
         "memory                                  what the computer wrote for timers and macros\n"
         "clock-request                           power fails: the interface wants its clock set\n"
         "fault NAME [count|probability]          at the next occasions, or from now on at random\n"
         "fault all PROBABILITY\n"
         "fault list\n"
         "fault off\n"
         "unplug                                  the cable is pulled out\n"
         "plug                                    and put in again\n"
         "quit";
}

}  // namespace homewarden::emulator
