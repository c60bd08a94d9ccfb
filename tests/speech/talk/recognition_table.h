#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/speech/talk/synthetic_speech.h"

namespace homewarden::testing {

// What became of a number of utterances.
struct Tally {
  int said = 0;
  int own = 0;       // heard as what was said, sure or not
  int accepted = 0;  // and carried out
  int asked = 0;     // instead
  int wrong = 0;     // another command carried out, or one for what is no command

  double own_share() const { return share(own); }
  double accepted_share() const { return share(accepted); }
  double refused_share() const { return share(said - wrong); }

 private:
  double share(int part) const { return said == 0 ? 100 : 100.0 * part / said; }
};

enum class Surroundings { kClean, kBabble20, kBabble10 };
inline constexpr Surroundings kSurroundings[] = {Surroundings::kClean, Surroundings::kBabble20,
                                                 Surroundings::kBabble10};

// How the talking house is understood, all the way from the sound to the verdict.
struct RecognitionTable {
  std::map<std::string, std::map<Surroundings, Tally>> commands;  // by voice
  Tally everyday;
  Tally near;
  std::vector<std::string> faults;  // each that went wrong, for a person

  Tally commands_in(Surroundings surroundings) const;
  void print() const;
};

// How much is said: every command in every voice, or each in one of the voices in turn, or every
// seventh of these.
enum class Extent { kEverything, kOnce, kFew };

// The voices are those of say(), and all are alike in what they say.
RecognitionTable recognise(const std::vector<std::string>& voices, Extent extent);

}  // namespace homewarden::testing
