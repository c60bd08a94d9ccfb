#include "tests/speech/talk/synthetic_speech.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <random>

#include "platform/speech/wav_file.h"
#include "tests/platform/scratch_folder.h"
#include "tests/speech/talk/house_talk.h"

extern "C" {
#include <flite/flite.h>

// Of the voices' libraries, which bring no header.
cst_voice* register_cmu_us_slt(const char* folder);
cst_voice* register_cmu_us_rms(const char* folder);
cst_voice* register_cmu_us_awb(const char* folder);
cst_voice* register_cmu_us_kal16(const char* folder);
}

namespace homewarden::testing {
namespace {

cst_voice* voice_of(const std::string& name) {
  static const std::map<std::string, cst_voice*> voices = [] {
    flite_init();
    return std::map<std::string, cst_voice*>{{"slt", register_cmu_us_slt(nullptr)},
                                             {"rms", register_cmu_us_rms(nullptr)},
                                             {"awb", register_cmu_us_awb(nullptr)},
                                             {"kal16", register_cmu_us_kal16(nullptr)}};
  }();
  return voices.at(name);
}

bool is_flite(const std::string& voice) {
  return std::find(std::begin(kVoices), std::end(kVoices), voice) != std::end(kVoices);
}

Sound say_with_espeak(const std::string& text, const std::string& voice, double stretch) {
  const ScratchFolder folder;
  const std::string file = folder / "said.wav";
  const std::string speed = std::to_string(static_cast<int>(160 / stretch));  // words a minute
  const std::string command =
      "espeak-ng -v " + voice + " -s " + speed + " -w " + file + " \"" + text + "\"";
  if (std::system(command.c_str()) != 0) return {};
  return speech::read_wave(file).value_or(Sound());
}

double power(const Sound& sound) {
  double sum = 0;
  for (const std::int16_t sample : sound) sum += static_cast<double>(sample) * sample;
  return sound.empty() ? 0 : sum / static_cast<double>(sound.size());
}

std::int16_t sample_of(double value) {
  return static_cast<std::int16_t>(std::clamp(std::round(value), -32768.0, 32767.0));
}

Sound with_quiet(const Sound& speech, double before, double after) {
  Sound sound(static_cast<std::size_t>(before * kSoundRate), 0);
  sound.insert(sound.end(), speech.begin(), speech.end());
  sound.resize(sound.size() + static_cast<std::size_t>(after * kSoundRate), 0);
  return sound;
}

std::string number(std::size_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i) & 0xFF);
  return text;
}

}  // namespace

Sound say(const std::string& text, const std::string& voice, double stretch) {
  if (!is_flite(voice)) return say_with_espeak(text, voice, stretch);
  cst_voice* speaker = voice_of(voice);
  feat_set_float(speaker->features, "duration_stretch", static_cast<float>(stretch));
  cst_wave* wave = flite_text_to_wave(text.c_str(), speaker);
  if (wave->sample_rate != kSoundRate) cst_wave_resample(wave, kSoundRate);
  Sound sound(wave->samples, wave->samples + wave->num_samples);
  delete_wave(wave);
  return sound;
}

Sound babble(std::size_t length) {
  static const Sound talk = [] {
    std::vector<double> sum;
    std::size_t next = 0;
    for (int talker = 0; talker < 8; ++talker) {
      Sound words;
      constexpr std::size_t kLength = 20 * kSoundRate;
      while (words.size() < kLength) {
        const auto& sentences = everyday_sentences();
        const Sound one =
            say(sentences[next++ % sentences.size()], kVoices[talker % 4], 0.9 + 0.03 * talker);
        words.insert(words.end(), one.begin(), one.end());
      }
      sum.resize(kLength);
      const double loudness = 1000 / std::sqrt(power(words));
      // None of them begins where another does.
      const std::size_t turn = static_cast<std::size_t>(talker) * kLength / 8;
      for (std::size_t i = 0; i < kLength; ++i) sum[(i + turn) % kLength] += words[i] * loudness;
    }
    Sound mixed;
    for (const double value : sum) mixed.push_back(sample_of(value));
    return mixed;
  }();
  static std::size_t start = 0;
  Sound part;
  start = (start + 7919) % talk.size();
  for (std::size_t i = 0; i < length; ++i) part.push_back(talk[(start + i) % talk.size()]);
  return part;
}

Sound in_a_room(const Sound& speech, double before, double after) {
  Sound sound = with_quiet(speech, before, after);
  std::mt19937 random(1);
  std::normal_distribution<double> noise(0, 5);
  for (std::int16_t& sample : sound) sample = sample_of(sample + noise(random));
  return sound;
}

Sound in_babble(const Sound& speech, double before, double after, double decibels) {
  Sound sound = with_quiet(speech, before, after);
  const Sound others = babble(sound.size());
  const double gain = std::sqrt(power(speech) / power(others)) * std::pow(10, -decibels / 20);
  for (std::size_t i = 0; i < sound.size(); ++i) sound[i] = sample_of(sound[i] + others[i] * gain);
  return sound;
}

void write_wave(const std::filesystem::path& file, const Sound& sound) {
  const std::size_t size = sound.size() * 2;
  std::ofstream stream(file, std::ios::binary);
  stream << "RIFF" << number(36 + size, 4) << "WAVEfmt " << number(16, 4) << number(1, 2)
         << number(1, 2) << number(kSoundRate, 4) << number(kSoundRate * 2, 4) << number(2, 2)
         << number(16, 2) << "data" << number(size, 4);
  stream.write(reinterpret_cast<const char*>(sound.data()), static_cast<std::streamsize>(size));
}

}  // namespace homewarden::testing
