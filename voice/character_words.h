#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "ui/figure.h"

namespace homewarden {

// The words of which a line of a character file is made.

inline constexpr double kFarthest = 10000;  // a number of any kind, either way

// What stands between blanks and tabs. Points into the line.
std::vector<std::string_view> words_of(std::string_view line);

// Nothing for what is no number, and for one beyond kFarthest.
std::optional<double> number_in(std::string_view word);

// The role of this name, or the value of "#rrggbb", light and dark alike.
std::optional<FigureColour> plain_colour(std::string_view word);

}  // namespace homewarden
