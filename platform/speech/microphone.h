#pragma once

#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSource>
#include <QObject>
#include <QTimer>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/microphones.h"
#include "platform/speech/audio_source.h"
#include "platform/speech/resampler.h"

class QIODevice;

namespace homewarden::speech {

// The microphones there are now, the usual one first. The first call connects to the desktop's
// sound system, which takes some ten milliseconds.
std::vector<MicrophoneName> microphones();

// A microphone of the desktop's sound system. Nothing of that is loaded before the first start.
class Microphone : public AudioSource {
 public:
  Microphone() = default;
  Microphone(const Microphone&) = delete;
  Microphone& operator=(const Microphone&) = delete;
  ~Microphone() override;

  // From the next start on; "" is the desktop's usual one, and so is one that is not there.
  void choose(std::string id) { id_ = std::move(id); }

  // A microphone that gives nothing for two seconds ends with trouble.
  void start(Samples samples, Ended ended) override;
  void stop() override;

 private:
  void open();
  void take();
  Sound sound_of(const QByteArray& bytes);
  void fail(const std::string& trouble);

  std::string id_;
  Samples samples_;
  Ended ended_;
  QAudioFormat format_;
  std::optional<Resampler> resampler_;  // where the microphone has another rate
  QByteArray rest_;                     // of a sample that has not come whole
  std::unique_ptr<QAudioSource> source_;
  QIODevice* stream_ = nullptr;  // of the source
  QTimer silence_;
  QObject context_;  // what the source calls goes with it
};

}  // namespace homewarden::speech
