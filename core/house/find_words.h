#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "x10/device_state.h"

namespace homewarden {

// What a person has typed: the words that name something, and the command that stands among them.
struct FindWords {
  std::vector<std::string> names;      // lower case, without accents
  std::optional<DeviceOrder> command;  // "on", "off", "40", "40 %", "dim 40"
  std::string number = {};             // when the command is nothing else: it may be part of a name
};

// A command stands behind the name, or alone: "radio on", "off". A first word is none when others
// follow that are none either: "on air lamp".
FindWords find_words(std::string_view text);

// Whether a thing that is called so is named by all the words, the number included: "bedroom 2".
bool names_number(const FindWords& words, std::string_view called,
                  std::string_view also_called = {});

// How well the words name a thing that is called so: 0 not at all; more for beginnings of words,
// for more of the words in the first text, for whole words, and when the first text has no others.
// Each must be found in one of the two. No words name everything, a little.
int match(const std::vector<std::string>& names, std::string_view called,
          std::string_view also_called = {});

}  // namespace homewarden
