#include "platform/speech/wav_source.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/speech/wav_file.h"

namespace homewarden::speech {
namespace {

constexpr std::chrono::milliseconds kBeat{20};
constexpr std::size_t kPortion = kSampleRate / 50;
constexpr std::size_t kPortionAtOnce = kSampleRate / 5;

}  // namespace

WavSource::WavSource(std::filesystem::path file, Pace pace) : file_(std::move(file)), pace_(pace) {
  beat_.setTimerType(Qt::PreciseTimer);
  beat_.callOnTimeout([this] { give(); });
}

void WavSource::start(Samples samples, Ended ended) {
  samples_ = std::move(samples);
  ended_ = std::move(ended);
  sound_.clear();
  given_ = 0;
  if (std::optional<Sound> sound = read_wave(file_)) sound_ = *std::move(sound);
  beat_.start(pace_ == Pace::kAsSpoken ? kBeat : std::chrono::milliseconds(0));
}

void WavSource::stop() {
  beat_.stop();
}

void WavSource::give() {
  const std::size_t portion_size = pace_ == Pace::kAsSpoken ? kPortion : kPortionAtOnce;
  const std::size_t count = std::min(portion_size, sound_.size() - given_);
  const SoundView portion = SoundView(sound_).subspan(given_, count);
  given_ += count;
  if (count > 0) return samples_(portion);
  beat_.stop();
  ended_(sound_.empty() ? "There is no sound in " + file_.string() : "");
}

}  // namespace homewarden::speech
