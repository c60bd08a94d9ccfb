#pragma once

#include <string>
#include <vector>

#include "ui/controls.h"

namespace homewarden {

// A name of the house that no dictionary has, and how a person wants it to be said.
struct GuessedFace {
  std::string name;
  std::string words;      // those that were guessed
  std::string spoken_as;  // in English spelling; "" leaves it guessed

  bool operator==(const GuessedFace&) const = default;
};

// Where the key that begins listening is heard.
enum class KeyReach {
  kEverywhere,
  kTaken,   // in the window alone: another program has it everywhere else
  kWindow,  // in the window alone: the desktop offers nothing more
};

// The property sheet of speech.
struct FrmSpeechSheet {
  FrmSpeechSheet() { lst_strictness.items = {"Strict", "Normal", "Lenient"}; }

  Property<bool> visible{false};
  Signal<> raised;  // asks the face to bring it to the front

  ListBox lst_microphone;  // the first is the desktop's usual one
  ListBox lst_strictness;
  Label lab_strictness;    // what the chosen one means
  Property<int> level{0};  // percent of what is loud, while something listens

  // Beside Scroll Lock: as a toolkit writes keys, "Ctrl+Alt+L"; "" is none.
  Property<std::string> key;
  Signal<> key_refused;  // a person has chosen one that is needed for writing
  Property<KeyReach> key_reach{KeyReach::kWindow};
  Label lab_key;  // where it works

  Button cmd_test{"Test"};  // listens once and does nothing; a second click gives up
  Label lab_tested;         // what was heard, and how sure that is

  Property<std::vector<GuessedFace>> guessed;
  Signal<const std::string&, const std::string&> respelled;  // a name, and how to say it
};

}  // namespace homewarden
