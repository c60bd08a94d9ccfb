#include "platform/speech/sound.h"

#include <algorithm>
#include <cmath>

namespace homewarden::speech {

double level_of(SoundView samples) {
  if (samples.empty()) return 0;
  const auto count = static_cast<double>(samples.size());
  double sum = 0;
  double squares = 0;
  for (const double sample : samples) {
    sum += sample;
    squares += sample * sample;
  }
  const double power = squares / count - (sum / count) * (sum / count);
  return 10 * std::log10(std::max(power, 1.0));
}

}  // namespace homewarden::speech
