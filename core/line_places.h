#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/list_file.h"

namespace homewarden {

// A line of a list, and the one that stood before it: "" for the first.
struct LineInPlace {
  std::string line;
  std::string behind;

  bool operator==(const LineInPlace&) const = default;
};

// The chosen lines of a list in their order.
std::vector<LineInPlace> chosen_in_place(std::string_view content, const ListFile::Choice& choice);

// Those of the lines that the list does not have.
std::vector<LineInPlace> missing_lines(std::string_view content,
                                       const std::vector<LineInPlace>& lines);

// The list with the lines that it does not have yet, each behind the line it stood behind, or at
// the end when that is no more. Every line is ended by CR LF.
std::string with_lines(std::string_view content, const std::vector<LineInPlace>& lines);

}  // namespace homewarden
