#include "tools/emulator/tool_options.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <optional>
#include <sstream>

namespace homewarden::emulator {

namespace {

template <class Number>
std::optional<Number> parse_number(const std::string& text) {
  Number value{};
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc{} || stop != end) return std::nullopt;
  return value;
}

std::string add_house(const std::string& path, std::vector<ModulePlace>& modules) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return "cannot read " + path;
  std::ostringstream text;
  text << file.rdbuf();
  const auto places = parse_house(text.str());
  if (places.empty()) return path + " names no device";
  // What --lamp and --appliance say counts, wherever they stand.
  modules.insert(modules.begin(), places.begin(), places.end());
  return "";
}

// Takes an option that has a value; returns what is wrong with the value.
std::string set_value(const std::string& name, const std::string& value, ToolOptions& options) {
  const std::string wrong = name + " " + value + ": ";
  if (name == "--mains") {
    const auto hertz = parse_number<int>(value);
    if (hertz != 50 && hertz != 60) return wrong + "say 50 or 60";
    options.emulator.mains_hertz = *hertz;
  } else if (name == "--speed") {
    const auto speed = parse_number<double>(value);
    if (!speed || !(*speed >= 0)) return wrong + "say how many times faster, 0 for at once";
    options.emulator.speed = *speed;
  } else if (name == "--seed") {
    const auto seed = parse_number<std::uint32_t>(value);
    if (!seed) return wrong + "say a whole number";
    options.emulator.seed = *seed;
  } else if (name == "--lamp" || name == "--appliance") {
    const auto address = cm11::parse_address(value);
    if (!address) return wrong + "say an address, A1 to P16";
    const auto type = name == "--lamp" ? ModuleType::kLamp : ModuleType::kAppliance;
    options.emulator.modules.push_back({*address, type, ""});
  } else if (name == "--house") {
    const std::string error = add_house(value, options.emulator.modules);
    if (!error.empty()) return wrong + error;
  } else if (name == "--link") {
    options.link = value;
  } else if (name == "--fault") {
    std::string fault = value;
    std::replace(fault.begin(), fault.end(), '=', ' ');
    options.faults.push_back(fault);
  } else {
    return name + ": unknown (see --help)";
  }
  return "";
}

}  // namespace

ToolOptions parse_tool_options(const std::vector<std::string>& arguments) {
  ToolOptions options;
  for (std::size_t i = 0; i < arguments.size() && options.error.empty(); ++i) {
    const std::string& name = arguments[i];
    if (name == "--help")
      options.help = true;
    else if (name == "--trace")
      options.trace = true;
    else if (name == "--keep")
      options.keep = true;
    else if (name == "--fast")
      options.emulator.speed = 0;
    else if (i + 1 < arguments.size())
      options.error = set_value(name, arguments[++i], options);
    else
      options.error = name + ": unknown, or its value is missing (see --help)";
  }
  return options;
}

std::vector<ModulePlace> parse_house(std::string_view text) {
  std::vector<ModulePlace> places;
  std::istringstream lines{std::string(text)};
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, '~');) fields.push_back(field);
    if (fields.size() != 4 || fields[2].size() != 1) continue;
    const auto address = cm11::parse_address(fields[2] + fields[3]);
    if (address) places.push_back({*address, ModuleType::kLamp, fields[0] + ", " + fields[1]});
  }
  return places;
}

std::string_view tool_help() {
  return "cm11-emulator: a computer interface, its power line and the modules in the house, at "
         "the\n"
         "end of a pseudo-terminal whose path is the first line printed. Commands are read from "
         "the\n"
         "standard input; say help there.\n"
         "\n"
         "--mains 50|60         frequency of the mains; 60\n"
         "--speed N             N times as fast as the mains; 1\n"
         "--fast                everything on the lines takes no time\n"
         "--house FILE          a lamp module for each device of a room list\n"
         "--lamp ADDRESS        a lamp module; more than one may be named\n"
         "--appliance ADDRESS   an appliance module\n"
         "                      without any of these there is a lamp at every address\n"
         "--link PATH           a link that leads to the pseudo-terminal while it is plugged in\n"
         "--fault NAME[=COUNT|=PROBABILITY]   as the command fault\n"
         "--seed N              of the faults that happen at random; 1\n"
         "--trace               prints the bytes on the serial line to the standard error\n"
         "--keep                goes on when the standard input ends\n"
         "--help                prints these options\n";
}

}  // namespace homewarden::emulator
