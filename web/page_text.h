#pragma once

#include <string>
#include <string_view>

#include "base/text.h"

namespace homewarden {

// What stands in a page for a text that may hold anything: the name of a room or a device, a
// notice.

// In a link. Every byte that could end it, or that the standard for addresses or a browser treats
// differently, is percent-encoded; a browser sends the others back as they are.
std::string for_link(std::string_view text);

// Where it is read, an attribute in double quotes included.
std::string for_reading(std::string_view text);

// Replaces the places of a page, "<room>" or "<room1>", in one pass, so that what is put in is not
// looked at again. `content_of` is asked for each with its name in lower case and its number, -1
// without one, and answers with a std::optional<std::string>; nothing leaves the place as it is.
template <class ContentOf>
std::string fill_places(std::string_view page, ContentOf content_of) {
  std::string filled;
  filled.reserve(page.size() * 2);
  for (;;) {
    const auto start = page.find('<');
    filled += page.substr(0, start);
    if (start == std::string_view::npos) return filled;
    page.remove_prefix(start);
    const auto end = page.find_first_of("<>", 1);
    if (end == std::string_view::npos || page[end] != '>') {
      filled += page.substr(0, 1);
      page.remove_prefix(1);
      continue;
    }
    std::string name = to_lower(page.substr(1, end - 1));
    const auto digits = name.find_last_not_of("0123456789") + 1;
    const auto length = name.size() - digits;
    constexpr std::size_t kMostDigits = 9;
    int number = -1;
    if (length > 0 && length <= kMostDigits && name[digits] != '0')
      number = std::stoi(name.substr(digits));
    if (name.substr(digits) == "0") number = 0;
    if (number >= 0) name.resize(digits);
    const auto content = content_of(std::string_view(name), number);
    filled += content ? std::string_view(*content) : page.substr(0, end + 1);
    page.remove_prefix(end + 1);
  }
}

}  // namespace homewarden
