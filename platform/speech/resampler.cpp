#include "platform/speech/resampler.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace homewarden::speech {
namespace {

// Zero crossings of the filter to each side.
constexpr double kCrossings = 10;
constexpr double kFineness = 512;

// A sine wave over its argument, in a window of a raised cosine.
double kernel_at(double distance, double width, double cutoff) {
  if (distance >= width) return 0;
  const double angle = std::numbers::pi * cutoff * distance;
  const double sinc = angle < 1e-9 ? 1 : std::sin(angle) / angle;
  return cutoff * sinc * (0.5 + 0.5 * std::cos(std::numbers::pi * distance / width));
}

}  // namespace

Resampler::Resampler(int rate)
    : step_(static_cast<double>(std::max(rate, 1)) / kSampleRate),
      width_(kCrossings * std::max(step_, 1.0)),
      held_(static_cast<std::size_t>(std::ceil(width_)), 0.0F),
      next_(std::ceil(width_)) {
  const double cutoff = 0.94 / std::max(step_, 1.0);
  for (double at = 0; at <= width_ * kFineness + 1; ++at)
    kernel_.push_back(static_cast<float>(kernel_at(at / kFineness, width_, cutoff)));
}

Sound Resampler::take(std::span<const float> samples) {
  held_.insert(held_.end(), samples.begin(), samples.end());
  Sound result;
  for (; next_ + width_ < static_cast<double>(held_.size()); next_ += step_) {
    const auto first = static_cast<std::size_t>(std::ceil(next_ - width_));
    const auto last = static_cast<std::size_t>(std::floor(next_ + width_));
    float sum = 0;
    for (std::size_t i = first; i <= last; ++i) {
      const double distance = std::abs(static_cast<double>(i) - next_);
      sum += held_[i] * kernel_[static_cast<std::size_t>(std::lround(distance * kFineness))];
    }
    const float scaled = std::round(std::clamp(sum, -1.0F, 1.0F) * 32767.0F);
    result.push_back(static_cast<std::int16_t>(scaled));
  }
  const auto done = static_cast<std::size_t>(std::max(0.0, std::floor(next_ - width_)));
  held_.erase(held_.begin(),
              held_.begin() + static_cast<std::ptrdiff_t>(std::min(done, held_.size())));
  next_ -= static_cast<double>(done);
  return result;
}

}  // namespace homewarden::speech
