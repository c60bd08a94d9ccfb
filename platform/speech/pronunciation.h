#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace homewarden::speech {

// How one word sounds, as phones of the model with blanks between them.
struct Pronunciation {
  std::vector<std::string> phones;  // one text for each way to say it, at least one
  bool guessed = false;             // from the spelling, for no dictionary has the word
};

using Pronunciations = std::map<std::string, Pronunciation>;

// The words that the house needs, from a dictionary of the form "word PH PH", with further ways as
// "word(2) PH PH". A word that it does not have is guessed by its spelling, and all are when the
// file cannot be read.
Pronunciations pronounce(const std::set<std::string>& words,
                         const std::filesystem::path& dictionary);

}  // namespace homewarden::speech
