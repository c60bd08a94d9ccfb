#pragma once

#include <string>
#include <vector>

#include "base/signal.h"
#include "core/settings.h"
#include "platform/microphones.h"
#include "platform/recogniser.h"
#include "ui/frm_speech_sheet.h"

namespace homewarden {

// The property sheet: what a person has chosen of microphone, strictness, key and the sound of
// names. All of it is kept in the settings.
class SpeechSheet {
 public:
  SpeechSheet(FrmSpeechSheet& form, Recogniser& recogniser, Microphones& microphones,
              Settings& settings);

  // Takes over what is in the settings.
  void read();
  // Also looks which microphones there are.
  void show(bool visible);

  // How those of the names that have a respelling are said.
  SpokenAs spoken_as(const std::vector<std::string>& names);
  // A person has changed one.
  Signal<> spoken_as_changed;

  // What a test has heard; nothing more is done with it.
  void show_tested(const Heard& heard);

 private:
  void show_microphones();
  void choose_microphone();
  void choose_strictness();
  void show_reach();
  void show_guessed();
  void respell(const std::string& name, const std::string& spoken);

  FrmSpeechSheet& form_;
  Recogniser& recogniser_;
  Microphones& microphones_;
  Settings& settings_;
  std::vector<MicrophoneName> shown_;  // as in the form's list
  std::vector<GuessedName> guessed_;
  SpokenAs respelled_;
  bool showing_ = false;  // the lists are being filled
};

}  // namespace homewarden
