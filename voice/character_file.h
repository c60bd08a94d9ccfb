#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ui/figure.h"

namespace homewarden {

// What a character file holds, or what is wrong with it and where: "line 12: ...", for a person.
struct CharacterFile {
  std::optional<Figure> figure;
  std::string trouble;
};

// The format is described in docs/characters.md. Anything may stand in the text: what it can bring
// about is limited.
CharacterFile read_character(std::string_view text);

}  // namespace homewarden
