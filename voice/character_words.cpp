#include "voice/character_words.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <system_error>
#include <utility>

#include "base/text.h"

namespace homewarden {
namespace {

constexpr std::pair<std::string_view, FigureRole> kRoleNames[] = {
    {"card", FigureRole::kCard},   {"line", FigureRole::kLine},       {"edge", FigureRole::kEdge},
    {"text", FigureRole::kText},   {"quiet", FigureRole::kQuiet},     {"link", FigureRole::kLink},
    {"amber", FigureRole::kAmber}, {"primary", FigureRole::kPrimary}, {"ink", FigureRole::kInk},
    {"warm", FigureRole::kWarm}};

std::optional<std::uint32_t> colour_value(std::string_view word) {
  if (word.size() != 7 || word.front() != '#') return {};
  std::uint32_t value = 0;
  for (const char digit : word.substr(1)) {
    if (hex_digit(digit) < 0) return {};
    value = value * 16 + static_cast<std::uint32_t>(hex_digit(digit));
  }
  return value;
}

}  // namespace

std::vector<std::string_view> words_of(std::string_view line) {
  std::vector<std::string_view> words;
  while (true) {
    const auto begin = line.find_first_not_of(" \t");
    if (begin == std::string_view::npos) return words;
    line.remove_prefix(begin);
    const auto end = std::min(line.find_first_of(" \t"), line.size());
    words.push_back(line.substr(0, end));
    line.remove_prefix(end);
  }
}

std::optional<double> number_in(std::string_view word) {
  double number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  const bool is_whole = error == std::errc() && end == word.data() + word.size();
  if (!is_whole || !(std::abs(number) <= kFarthest)) return {};
  return number;
}

std::optional<FigureColour> plain_colour(std::string_view word) {
  for (const auto& [name, role] : kRoleNames)
    if (name == word) return FigureColour{FigureColour::Kind::kRole, role, 0, 0};
  if (const auto value = colour_value(word))
    return FigureColour{FigureColour::Kind::kValue, FigureRole::kText, *value, *value};
  return {};
}

}  // namespace homewarden
