#include "platform/speech/listener.h"

#include <algorithm>
#include <utility>

#include "platform/speech/verdict.h"

namespace homewarden::speech {
namespace {

constexpr std::size_t kLongest = 8 * kSampleRate;
constexpr std::size_t kLevelEvery = kSampleRate / 20;
constexpr std::size_t kSamePlace = 5;  // frames by which two places differ that hold the same words

std::vector<GuessedName> guessed_names(const HouseGrammar& grammar,
                                       const Pronunciations& pronunciations) {
  std::vector<GuessedName> names;
  for (const auto& [name, words] : grammar.names) {
    GuessedName one{name, {}};
    for (const std::string& word : words)
      if (const auto found = pronunciations.find(word);
          found != pronunciations.end() && found->second.guessed)
        one.words.push_back(word);
    if (!one.words.empty()) names.push_back(std::move(one));
  }
  return names;
}

bool is_same(const EndPointer::Place& a, const EndPointer::Place& b) {
  const auto near = [](std::size_t x, std::size_t y) { return std::max(x, y) - std::min(x, y); };
  return near(a.begin, b.begin) <= kSamePlace && near(a.end, b.end) <= kSamePlace;
}

}  // namespace

Listener::Listener(VoiceModel model, Answers answers)
    : model_(std::move(model)), answers_(std::move(answers)) {}

bool Listener::load() {
  if (decoder_) return true;
  trouble_ = trouble_with(model_);
  if (!trouble_.empty()) return false;
  decoder_ = Decoder::open(model_.acoustic);
  if (!decoder_) trouble_ = "The speech model in " + model_.acoustic.string() + " cannot be read.";
  return decoder_ != nullptr;
}

void Listener::learn(std::vector<VoiceCommand> commands, const SpokenAs& spoken_as) {
  if (!load()) return;
  HouseGrammar grammar = build_grammar(commands, spoken_as);
  const Pronunciations pronunciations = pronounce(grammar.words, model_.dictionary);
  if (decoder_->set_grammar(grammar.jsgf, pronunciations)) {
    trouble_.clear();
    commands_ = std::move(commands);
    grammar_ = std::move(grammar);
    guess_.reset();
  } else {
    trouble_ = "The names of the house cannot be made into what is listened for.";
  }
  answers_.guessed(guessed_names(grammar_, pronunciations));
}

void Listener::begin(Strictness strictness) {
  strictness_ = strictness;
  ends_ = std::make_unique<EndPointer>();
  guess_.reset();
  heard_samples_ = since_level_ = 0;
  load();
  if (!trouble_.empty()) end(ListenEnd::kTrouble, trouble_);
}

void Listener::take(SoundView samples) {
  if (!is_listening()) return;
  samples = samples.first(std::min(samples.size(), kLongest - heard_samples_));
  heard_samples_ += samples.size();
  if (!ends_->take(samples) && heard_samples_ == kLongest) ends_->cut();
  tell_level(samples.size());
  if (ends_->has_ended())
    understand();
  else
    guess();
}

// Takes about as long as it is quiet until the end is sure.
void Listener::guess() {
  const auto place = ends_->likely_utterance();
  if (!place || (guess_ && is_same(guess_->place, *place))) return;
  guess_ = Guess{*place, decoder_->decode(ends_->sound_of(*place))};
}

void Listener::finish(const std::string& trouble) {
  if (!is_listening()) return;
  if (!trouble.empty()) return end(ListenEnd::kTrouble, trouble);
  ends_->cut();
  understand();
}

void Listener::fail(const std::string& why) {
  if (is_listening()) end(ListenEnd::kTrouble, "Speech recognition failed: " + why);
}

void Listener::drop() {
  ends_.reset();
}

void Listener::tell_level(std::size_t samples) {
  since_level_ += samples;
  if (since_level_ < kLevelEvery) return;
  since_level_ = 0;
  answers_.level(ends_->level());
}

void Listener::end(ListenEnd how, const std::string& trouble) {
  ends_.reset();
  answers_.ended(how, trouble);
}

void Listener::understand() {
  const auto place = ends_->utterance();
  if (!place) return end(ListenEnd::kNothing);
  const bool is_known = guess_ && is_same(guess_->place, *place);
  const Sound sound = is_known ? Sound() : ends_->sound_of(*place);
  end(ListenEnd::kUtterance);
  const HeardWords words = is_known ? std::move(guess_->words) : decoder_->decode(sound);
  Heard heard;
  for (const HeardWord& word : words) heard.words += (heard.words.empty() ? "" : " ") + word.word;
  if (const auto found = grammar_.meaning.find(heard.words); found != grammar_.meaning.end()) {
    heard.command = commands_[found->second];
    heard.verdict = judge(certainty(words, place->contrast), strictness_);
  }
  answers_.heard(heard);
}

}  // namespace homewarden::speech
