#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/recogniser.h"

namespace homewarden::speech {

// All that can be said in a house.
struct HouseGrammar {
  std::string jsgf;             // in the JSpeech Grammar Format
  std::set<std::string> words;  // those that it names
  // From words with blanks between them to the place of the command among the registered ones.
  // What the grammar allows and this does not have is a no-command: it stands there to be heard
  // for what it is, since nothing else could catch "kitchen light off", which sounds like "on".
  std::unordered_map<std::string, std::size_t> meaning;
  // The words of each room and device, by the name.
  std::map<std::string, std::vector<std::string>> names;
  // Places of commands that no words lead to: their names cannot be said, or an earlier command has
  // the same words.
  std::vector<std::size_t> unreachable;
};

// Every command in its full form, and without the words that may be left out where that means this
// one alone. `spoken_as` has English respellings of names of rooms and devices.
HouseGrammar build_grammar(const std::vector<VoiceCommand>& commands, const SpokenAs& spoken_as);

}  // namespace homewarden::speech
