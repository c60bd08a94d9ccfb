#include "platform/speech/end_pointing.h"

#include <algorithm>

namespace homewarden::speech {
namespace {

// In frames of 10 ms; levels in decibels.
constexpr std::size_t kFrame = kSampleRate / 100;
constexpr std::size_t kSmoothed = 3;
constexpr std::size_t kFloorFrames = 300;
constexpr double kLeastFloor = 10;

constexpr double kStartAbove = 9;  // over the floor, in half of the last frames
constexpr std::size_t kStartWindow = 12;
constexpr std::size_t kGap = 30;  // within what was said before the start was found

constexpr std::size_t kQuietEnds = 60;
constexpr std::size_t kQuietMayEnd = 30;
constexpr double kLeastAbove = 6;
// Where between the floor (0) and the loudest of the speech (1) its edges lie. In a quiet room that
// is far below any word, among people who talk it is above most of them.
constexpr double kEdge = 0.5;
constexpr double kLeastContrast = 12;
constexpr std::size_t kLeastSpeech = 25;
constexpr std::size_t kMostSpeech = 600;

// Louder moments of what others say are not joined to the speech over more than this.
constexpr std::size_t kPause = 40;

constexpr std::size_t kBefore = 30;  // what is kept around it
constexpr std::size_t kAfter = 20;

// The level that this part of the frames stays below.
double quantile(std::vector<double> levels, double part) {
  if (levels.empty()) return 0;
  const auto at = static_cast<std::ptrdiff_t>(part * static_cast<double>(levels.size() - 1));
  std::nth_element(levels.begin(), levels.begin() + at, levels.end());
  return levels[static_cast<std::size_t>(at)];
}

}  // namespace

bool EndPointer::take(SoundView samples) {
  if (has_ended_) return true;
  samples_.insert(samples_.end(), samples.begin(), samples.end());
  while (!has_ended_ && (frames_ + 1) * kFrame <= samples_.size()) take_frame();
  return has_ended_;
}

void EndPointer::cut() {
  if (is_speaking_) end();
  has_ended_ = true;
  is_speaking_ = false;
}

Sound EndPointer::sound_of(const Place& place) const {
  const auto at = [this](std::size_t frame) {
    const std::size_t sample = std::min(frame * kFrame, samples_.size());
    return samples_.begin() + static_cast<std::ptrdiff_t>(sample);
  };
  return {at(place.begin), at(place.end)};
}

std::optional<EndPointer::Place> EndPointer::likely_utterance() const {
  return is_speaking_ && is_quiet_for(kQuietMayEnd) ? measure() : std::nullopt;
}

void EndPointer::take_frame() {
  const SoundView all(samples_);
  raw_.push_back(level_of(all.subspan(frames_++ * kFrame, kFrame)));
  const std::size_t count = std::min(kSmoothed, raw_.size());
  double sum = 0;
  for (std::size_t i = raw_.size() - count; i < raw_.size(); ++i) sum += raw_[i];
  levels_.push_back(sum / static_cast<double>(count));
  if (is_speaking_)
    look_for_end();
  else
    look_for_start();
}

void EndPointer::look_for_start() {
  outside_.push_back(levels_.back());
  if (outside_.size() > kFloorFrames) outside_.pop_front();
  floor_ = std::max(quantile({outside_.begin(), outside_.end()}, 0.1), kLeastFloor);
  const std::size_t window = std::min(kStartWindow, frames_ - waiting_from_);
  const auto is_loud = [this](double level) { return level >= floor_ + kStartAbove; };
  const auto from = levels_.end() - static_cast<std::ptrdiff_t>(window);
  if (std::count_if(from, levels_.end(), is_loud) * 2 < static_cast<std::ptrdiff_t>(kStartWindow))
    return;
  is_speaking_ = true;
  // Speech that began before there was quiet to measure it by is followed back to its beginning.
  start_ = frames_ - window;
  for (std::size_t at = frames_; at > waiting_from_ && start_ < at + kGap; --at)
    if (levels_[at - 1] >= floor_ + kLeastAbove) start_ = std::min(start_, at - 1);
}

void EndPointer::look_for_end() {
  const auto start = levels_.begin() + static_cast<std::ptrdiff_t>(start_);
  const double peak = quantile({start, levels_.end()}, 0.9);
  loud_ = floor_ + std::max(kLeastAbove, kEdge * (peak - floor_));
  if (is_quiet_for(kQuietEnds) || frames_ - start_ >= kMostSpeech) end();
}

bool EndPointer::is_quiet_for(std::size_t frames) const {
  if (frames_ - start_ < frames) return false;
  const auto is_loud = [this](double level) { return level >= loud_; };
  return std::none_of(levels_.end() - static_cast<std::ptrdiff_t>(frames), levels_.end(), is_loud);
}

void EndPointer::end() {
  is_speaking_ = false;
  utterance_ = measure();
  has_ended_ = utterance_.has_value();
  if (!has_ended_) wait_on();
}

std::optional<EndPointer::Place> EndPointer::measure() const {
  const Stretch speech = longest_stretch();
  const auto at = [this](std::size_t frame) {
    return levels_.begin() + static_cast<std::ptrdiff_t>(frame);
  };
  const double contrast = quantile({at(speech.first), at(speech.end)}, 0.9) - floor_;
  if (speech.end - speech.first < kLeastSpeech || contrast < kLeastContrast) return {};
  const std::size_t begin = speech.first > kBefore ? speech.first - kBefore : 0;
  return Place{std::max(waiting_from_, begin), speech.end + kAfter, contrast};
}

// From a loud frame to behind a loud one, with no long pause inside.
EndPointer::Stretch EndPointer::longest_stretch() const {
  Stretch longest;
  Stretch one;
  for (std::size_t at = start_; at < frames_; ++at) {
    if (levels_[at] < loud_) continue;
    if (one.end == 0 || at - one.end >= kPause) one = {at, at, 0};
    one.end = at + 1;
    ++one.loud;
    if (one.loud > longest.loud) longest = one;
  }
  return longest;
}

// What was taken for speech is part of what is always heard here.
void EndPointer::wait_on() {
  for (std::size_t at = start_; at < frames_; ++at) outside_.push_back(levels_[at]);
  while (outside_.size() > kFloorFrames) outside_.pop_front();
  waiting_from_ = frames_;
}

}  // namespace homewarden::speech
