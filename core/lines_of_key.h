#pragma once

#include <string>
#include <string_view>

#include "core/list_file.h"

namespace homewarden {

// How an entry of a list is found again by a text: the lines that are the text come first, and only
// when there is none the lines that contain it. Letter case is ignored everywhere.

// Whether a line is what the key names.
using IsKey = bool (*)(std::string_view line, std::string_view key);

// Chooses the lines of `content` that the key means: each of those that are the key, whatever else
// contains it; without one, each that contains it. An empty key chooses none.
ListFile::Choice lines_of_key(std::string_view content, std::string key, IsKey is_key);
// With lines that are equal to the key, but for letter case.
ListFile::Choice lines_of_key(std::string_view content, std::string key);

// The chosen lines in their order, each ended by CR LF but the last; "" when none is chosen.
std::string chosen_lines(std::string_view content, const ListFile::Choice& choice);

}  // namespace homewarden
