#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace homewarden::speech {

// The words in which the name of a room or a device is spoken, in lower case; none when nothing in
// it can be said. Accents are taken off, signs and numbers become words: "Zoe's TV 2 & Caf\xE9" is
// zoe's, t, v, two, and, cafe.
//
// Each name is to be asked for alone: in a sentence a name may be read by its neighbours.
std::vector<std::string> spoken_words(std::string_view name);

}  // namespace homewarden::speech
