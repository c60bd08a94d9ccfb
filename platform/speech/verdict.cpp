#include "platform/speech/verdict.h"

#include <algorithm>

namespace homewarden::speech {
namespace {

// Below the limit by this much a person is asked.
constexpr double kAskWithin = 8;

// A short word says less about itself than a long one: to each are added this many frames as the
// whole utterance has them on average.
constexpr double kOfTheOthers = 10;

// What noise takes from the score of a word; measured in babble at 20 and at 10 dB.
constexpr double kFullContrast = 38;
constexpr double kMostLost = 20;  // decibels
constexpr double kLostPerDecibel = 0.4;

double length_of(const HeardWord& word) {
  return word.last_frame - word.first_frame + 1;
}

double limit(Strictness strictness) {
  switch (strictness) {
    case Strictness::kStrict:
      return -14;
    case Strictness::kNormal:
      return -26;
    case Strictness::kLenient:
      break;
  }
  return -32;
}

}  // namespace

double certainty(const HeardWords& words, double contrast) {
  if (words.empty()) return -1000;
  double sum = 0;
  double frames = 0;
  for (const HeardWord& word : words) {
    sum += word.score * length_of(word);
    frames += length_of(word);
  }
  const double mean = sum / frames;
  double worst = mean;
  for (const HeardWord& word : words) {
    const double length = length_of(word);
    worst = std::min(worst, (word.score * length + mean * kOfTheOthers) / (length + kOfTheOthers));
  }
  return worst + kLostPerDecibel * std::clamp(kFullContrast - contrast, 0.0, kMostLost);
}

Heard::Verdict judge(double certainty, Strictness strictness) {
  if (certainty >= limit(strictness)) return Heard::Verdict::kAccepted;
  const bool is_near = certainty >= limit(strictness) - kAskWithin;
  return is_near ? Heard::Verdict::kNearly : Heard::Verdict::kRefused;
}

}  // namespace homewarden::speech
