#pragma once

#include <optional>
#include <string_view>

#include "ui/figure.h"

namespace homewarden {

// The outline that path data describes as in the "d" of SVG: M, L, H, V, C, S, Q, T and Z, capital
// for places and small for distances. Nothing for anything else, arcs included, for a coordinate
// beyond 10000 and for more than 2000 steps.
std::optional<Outline> read_path(std::string_view data);

// In four curves.
Outline ellipse(double x, double y, double width, double height);

}  // namespace homewarden
