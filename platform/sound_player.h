#pragma once

#include <filesystem>

namespace homewarden {

class SoundPlayer {
 public:
  virtual ~SoundPlayer() = default;

  // Starts playing a wave file and returns at once. A file that is missing or no wave file, and a
  // machine without sound, play nothing.
  virtual void play(const std::filesystem::path& file) = 0;
};

}  // namespace homewarden
