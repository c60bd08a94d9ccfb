#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace homewarden::speech {

// Sound as the recogniser takes it: one channel of 16-bit samples, 16000 a second.
inline constexpr int kSampleRate = 16000;
using Sound = std::vector<std::int16_t>;
using SoundView = std::span<const std::int16_t>;

// How loud a piece of sound is, in decibels over the smallest step of a sample: 0 in digital
// silence, 90 at most. A constant offset is no sound.
double level_of(SoundView samples);

}  // namespace homewarden::speech
