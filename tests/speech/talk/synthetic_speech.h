#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace homewarden::testing {

// 16-bit samples, 16000 a second.
using Sound = std::vector<std::int16_t>;
inline constexpr int kSoundRate = 16000;

// The voices of Flite.
inline constexpr const char* kVoices[] = {"slt", "rms", "awb", "kal16"};

// A text as one of them says it; a stretch of 0.8 is fast, of 1.2 slow. Any other voice is one of
// the program espeak-ng; silence where that is not installed.
Sound say(const std::string& text, const std::string& voice, double stretch = 1);

// As long as asked, of several people talking at once, always the same.
Sound babble(std::size_t length);

// The speech with quiet around it, in seconds, and with noise under all of it: the level of the
// speech over that of the noise is given in decibels. Very little noise is in every room.
Sound in_a_room(const Sound& speech, double before, double after);
Sound in_babble(const Sound& speech, double before, double after, double decibels);

// As a wave file of 16-bit samples.
void write_wave(const std::filesystem::path& file, const Sound& sound);

}  // namespace homewarden::testing
