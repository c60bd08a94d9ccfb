#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "platform/speech/sound.h"

namespace homewarden::speech {

// From any sample rate to the recogniser's, of one channel that comes in portions. What the lower
// rate cannot hold is filtered out first.
class Resampler {
 public:
  // Samples a second, at least 1.
  explicit Resampler(int rate);

  // What can be said of the sound up to here; the last millisecond waits for the next portion.
  // Samples are from -1 to 1, what is beyond is cut off.
  Sound take(std::span<const float> samples);

 private:
  const double step_;          // samples of the source for each of the result
  const double width_;         // of the filter to one side, in samples of the source
  std::vector<float> kernel_;  // that side of it, finely
  std::vector<float> held_;    // of the source, what is still needed
  double next_ = 0;            // where the next sample of the result lies in `held_`
};

}  // namespace homewarden::speech
