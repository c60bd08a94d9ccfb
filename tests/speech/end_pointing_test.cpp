#include "platform/speech/end_pointing.h"

#include <cmath>
#include <random>

#include "platform/speech/resampler.h"

namespace homewarden::testing {
namespace {

using speech::EndPointer;
using speech::kSampleRate;
using speech::Sound;

// Pieces of noise one after the other.
class Noise {
 public:
  Noise& then(double seconds, double decibels) {
    std::normal_distribution<double> noise(0, std::pow(10, decibels / 20));
    for (int i = 0; i < static_cast<int>(seconds * kSampleRate); ++i)
      sound.push_back(static_cast<std::int16_t>(noise(random_)));
    return *this;
  }
  Sound sound;

 private:
  std::mt19937 random_{1};
};

double seconds(const Sound& sound) {
  return static_cast<double>(sound.size()) / kSampleRate;
}

double kept(const EndPointer& ends) {
  return ends.utterance() ? seconds(ends.sound_of(*ends.utterance())) : 0;
}

// How many seconds it took to the end; all of them when there was none.
double heard_until(EndPointer& ends, const Sound& sound, std::size_t portion) {
  std::size_t given = 0;
  while (given < sound.size()) {
    const std::size_t count = std::min(portion, sound.size() - given);
    given += count;
    if (ends.take(speech::SoundView(sound).subspan(given - count, count))) break;
  }
  return static_cast<double>(given) / kSampleRate;
}

TEST(EndPointing, AnUtteranceEndsSoonAfterItAndIsKeptWhole) {
  for (const double room : {0.0, 20.0, 45.0})
    for (const std::size_t portion : {1U, 160U, 333U, 16000U}) {
      const Noise heard =
          Noise().then(1, room).then(0.5, 65).then(0.3, room).then(0.5, 62).then(3, room);
      EndPointer ends;
      const double until = heard_until(ends, heard.sound, portion);
      EXPECT_NEAR(until, 2.3 + 0.6, portion > 1000 ? 1 : 0.1) << room;
      EXPECT_NEAR(kept(ends), 1.3 + 0.3 + 0.2, 0.1) << "both words and a little more";
    }
}

TEST(EndPointing, WhereItLiesIsKnownBeforeItsEndIsSure) {
  EndPointer ends;
  const Noise heard = Noise().then(1, 25).then(0.6, 65).then(0.45, 25);
  heard_until(ends, heard.sound, 160);
  const auto likely = ends.likely_utterance();
  ASSERT_TRUE(likely);
  heard_until(ends, Noise().then(1, 25).sound, 160);
  ASSERT_TRUE(ends.utterance());
  EXPECT_NEAR(static_cast<double>(likely->begin), static_cast<double>(ends.utterance()->begin), 5);
  EXPECT_NEAR(static_cast<double>(likely->end), static_cast<double>(ends.utterance()->end), 5);
}

TEST(EndPointing, SpeechFromTheFirstSampleOnIsKeptWhole) {
  EndPointer ends;
  heard_until(ends, Noise().then(0.4, 65).then(0.15, 25).then(0.6, 65).then(2, 25).sound, 160);
  EXPECT_TRUE(ends.has_ended());
  EXPECT_NEAR(kept(ends), 1.15 + 0.2, 0.1);
}

// A knock or a murmur taken for speech would end the listening before the person speaks.
TEST(EndPointing, KnocksAndMurmursAreWaitedThrough) {
  Noise heard;
  heard.then(1, 30).then(0.1, 75).then(1, 30).then(0.5, 41).then(1.2, 30).then(0.7, 65).then(2, 30);
  EndPointer ends;
  EXPECT_NEAR(heard_until(ends, heard.sound, 160), 4.5 + 0.6, 0.1);
  EXPECT_NEAR(kept(ends), 0.7 + 0.5, 0.1);
}

TEST(EndPointing, SilenceHasNoUtteranceAndEndlessNoiseIsCut) {
  EndPointer silence;
  silence.take(Noise().then(8, 30).sound);
  silence.cut();
  EXPECT_FALSE(silence.utterance().has_value());
  EndPointer noise;
  EXPECT_LT(heard_until(noise, Noise().then(0.5, 30).then(8, 70).sound, 160), 7.5);
  EXPECT_GT(kept(noise), 5);
  EndPointer cut;
  cut.take(Noise().then(0.5, 30).then(0.6, 65).sound);
  cut.cut();
  EXPECT_NEAR(kept(cut), 0.9, 0.1) << "said to the last moment";
}

// A tone that the lower rate has keeps its loudness, one that it does not have is gone instead of
// coming back as another.
TEST(Resampling, KeepsWhatTheLowerRateHasAndNothingElse) {
  for (const int rate : {8000, 22050, 44100, 48000})
    for (const auto& [tone, level] : {std::pair{1000.0, 77.3}, {11000.0, 0.0}}) {
      if (tone > rate / 2.0) continue;
      std::vector<float> source;
      for (int i = 0; i < rate; ++i)
        source.push_back(static_cast<float>(0.3162 * std::sin(2 * M_PI * tone * i / rate)));
      speech::Resampler resampler(rate);
      Sound sound;
      for (std::size_t at = 0; at < source.size(); at += 441) {
        const auto part =
            std::span(source).subspan(at, std::min<std::size_t>(441, source.size() - at));
        const Sound one = resampler.take(part);
        sound.insert(sound.end(), one.begin(), one.end());
      }
      EXPECT_NEAR(seconds(sound), 1, 0.01) << rate;
      const double heard = speech::level_of(speech::SoundView(sound).subspan(1000, 14000));
      if (level > 0)
        EXPECT_NEAR(heard, level, 0.2) << rate;
      else
        EXPECT_LT(heard, 30) << rate;
    }
}

}  // namespace
}  // namespace homewarden::testing
