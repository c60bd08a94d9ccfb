#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/recogniser.h"
#include "platform/speech/decoder.h"
#include "platform/speech/end_pointing.h"
#include "platform/speech/house_grammar.h"
#include "platform/speech/voice_model.h"

namespace homewarden::speech {

// What the recogniser's thread does with sound and commands, in the order in which it is told. Its
// answers are calls of the functions given, in the same thread.
class Listener {
 public:
  struct Answers {
    std::function<void(double decibels)> level;
    std::function<void(ListenEnd end, const std::string& trouble)> ended;
    std::function<void(const Heard& heard)> heard;
    std::function<void(const std::vector<GuessedName>& names)> guessed;
  };

  Listener(VoiceModel model, Answers answers);

  // Takes in all that can be said.
  void learn(std::vector<VoiceCommand> commands, const SpokenAs& spoken_as);

  // What follows is a listening of its own, judged with this strictness.
  void begin(Strictness strictness);
  // Ignored outside a listening.
  void take(SoundView samples);
  // There is no more sound: with trouble where it broke off.
  void finish(const std::string& trouble);
  // The listening cannot go on, for a reason that is told.
  void fail(const std::string& why);
  // Forgets the listening.
  void drop();

  bool is_listening() const { return ends_ != nullptr; }

 private:
  bool load();
  void understand();
  void guess();
  void tell_level(std::size_t samples);
  void end(ListenEnd how, const std::string& trouble = {});

  const VoiceModel model_;
  const Answers answers_;
  std::string trouble_;  // why nothing can be recognised
  std::unique_ptr<Decoder> decoder_;
  std::vector<VoiceCommand> commands_;
  HouseGrammar grammar_;
  Strictness strictness_ = Strictness::kNormal;
  std::unique_ptr<EndPointer> ends_;  // while it listens
  // What was made of the utterance before it was sure to have ended: most have ended then.
  struct Guess {
    EndPointer::Place place;
    HeardWords words;
  };
  std::optional<Guess> guess_;
  std::size_t heard_samples_ = 0;
  std::size_t since_level_ = 0;
};

}  // namespace homewarden::speech
