#pragma once

#include <QTimer>
#include <cstddef>
#include <filesystem>

#include "platform/speech/audio_source.h"

namespace homewarden::speech {

// A wave file in place of a microphone, from its beginning at each start.
class WavSource : public AudioSource {
 public:
  enum class Pace { kAsSpoken, kAtOnce };

  explicit WavSource(std::filesystem::path file, Pace pace = Pace::kAsSpoken);

  void start(Samples samples, Ended ended) override;
  void stop() override;

 private:
  void give();

  const std::filesystem::path file_;
  const Pace pace_;
  Samples samples_;
  Ended ended_;
  Sound sound_;
  std::size_t given_ = 0;
  QTimer beat_;
};

}  // namespace homewarden::speech
