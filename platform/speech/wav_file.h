#pragma once

#include <filesystem>
#include <optional>

#include "platform/speech/sound.h"

namespace homewarden::speech {

// The sound of a wave file, at most an hour: 16-bit PCM of any rate, of several channels the first.
// Nothing when the file cannot be read or holds anything else.
std::optional<Sound> read_wave(const std::filesystem::path& file);

}  // namespace homewarden::speech
