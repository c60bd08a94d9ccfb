#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/speech/pronunciation.h"

namespace homewarden::speech {

// A word as it was found in the sound.
struct HeardWord {
  std::string word;
  int first_frame = 0;  // of 10 ms, from the beginning of the utterance
  int last_frame = 0;
  // How much better the word explains these frames than any row of phones does, for each frame;
  // near 0 and above it when it was said, far below it when something else was.
  double score = 0;
};

// The words that an utterance comes nearest to; none when nothing in the grammar is near.
using HeardWords = std::vector<HeardWord>;

// PocketSphinx with two searches, one through the grammar and one through all phones in any order,
// against which the words of the first are held.
class Decoder {
 public:
  // The folder holds an acoustic model. Null when the library does not accept it.
  static std::unique_ptr<Decoder> open(const std::filesystem::path& acoustic_model);
  Decoder(const Decoder&) = delete;
  Decoder& operator=(const Decoder&) = delete;
  virtual ~Decoder() = default;

  // A grammar whose words all have a pronunciation. False when the library does not accept it; then
  // the former one stays. An empty one has nothing to be heard.
  virtual bool set_grammar(const std::string& jsgf, const Pronunciations& pronunciations) = 0;

  // 16-bit samples, 16000 a second, of one utterance with some quiet at both ends. Takes about a
  // tenth of its length.
  virtual HeardWords decode(std::span<const std::int16_t> samples) = 0;

 protected:
  Decoder() = default;
};

}  // namespace homewarden::speech
