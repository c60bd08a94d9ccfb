#include "platform/speech/microphone.h"

#include <QIODevice>
#include <QMediaDevices>
#include <algorithm>
#include <chrono>
#include <utility>

#include "base/code_page.h"

namespace homewarden::speech {
namespace {

constexpr std::chrono::seconds kPatience{2};

QAudioDevice device_of(const std::string& id) {
  for (const QAudioDevice& device : QMediaDevices::audioInputs())
    if (!id.empty() && device.id().toStdString() == id) return device;
  return QMediaDevices::defaultAudioInput();
}

QAudioFormat format_of(const QAudioDevice& device) {
  QAudioFormat format;
  format.setSampleRate(kSampleRate);
  format.setChannelCount(1);
  format.setSampleFormat(QAudioFormat::Int16);
  return device.isFormatSupported(format) ? format : device.preferredFormat();
}

bool is_native(const QAudioFormat& format) {
  return format.sampleRate() == kSampleRate && format.channelCount() == 1 &&
         format.sampleFormat() == QAudioFormat::Int16;
}

}  // namespace

std::vector<MicrophoneName> microphones() {
  std::vector<MicrophoneName> names;
  const QAudioDevice usual = QMediaDevices::defaultAudioInput();
  for (const QAudioDevice& device : QMediaDevices::audioInputs()) {
    MicrophoneName one{device.id().toStdString(), from_utf8(device.description().toStdString())};
    names.insert(device == usual ? names.begin() : names.end(), std::move(one));
  }
  return names;
}

Microphone::~Microphone() {
  stop();
}

void Microphone::start(Samples samples, Ended ended) {
  stop();
  samples_ = std::move(samples);
  ended_ = std::move(ended);
  // From the loop, as all that is told: who starts it is not yet ready for an end.
  QMetaObject::invokeMethod(
      &context_, [this] { open(); }, Qt::QueuedConnection);
}

void Microphone::open() {
  if (!samples_ || source_) return;
  const QAudioDevice device = device_of(id_);
  if (device.isNull()) return fail("There is no microphone.");
  format_ = format_of(device);
  resampler_.reset();
  if (!is_native(format_)) resampler_.emplace(format_.sampleRate());
  rest_.clear();
  source_ = std::make_unique<QAudioSource>(device, format_);
  stream_ = source_->start();
  if (!stream_ || source_->error() != QAudio::NoError)
    return fail("The microphone cannot be opened: " +
                from_utf8(device.description().toStdString()));
  QObject::connect(stream_, &QIODevice::readyRead, &context_, [this] { take(); });
  QObject::connect(
      source_.get(), &QAudioSource::stateChanged, &context_,
      [this](QAudio::State to) {
        if (to == QAudio::StoppedState) fail("The microphone has gone.");
      },
      Qt::QueuedConnection);
  silence_.setSingleShot(true);
  silence_.callOnTimeout(&context_, [this] { fail("The microphone gives no sound."); });
  silence_.start(kPatience);
}

void Microphone::take() {
  if (!source_ || !stream_) return;
  rest_ += stream_->readAll();
  const int whole =
      static_cast<int>(rest_.size()) / format_.bytesPerFrame() * format_.bytesPerFrame();
  if (whole == 0) return;
  silence_.start(kPatience);
  const QByteArray bytes = rest_.first(whole);
  rest_.remove(0, whole);
  const Sound sound = sound_of(bytes);
  const Samples samples = samples_;  // it may stop this
  if (!sound.empty()) samples(sound);
}

// Of several channels the first; the others have the same or nothing.
Sound Microphone::sound_of(const QByteArray& bytes) {
  const char* data = bytes.constData();
  const auto frames = static_cast<std::size_t>(bytes.size() / format_.bytesPerFrame());
  if (!resampler_) {
    Sound sound(frames);
    std::copy_n(data, bytes.size(), reinterpret_cast<char*>(sound.data()));
    return sound;
  }
  std::vector<float> samples(frames);
  for (std::size_t i = 0; i < frames; ++i)
    samples[i] =
        format_.normalizedSampleValue(data + i * static_cast<std::size_t>(format_.bytesPerFrame()));
  return resampler_->take(samples);
}

void Microphone::fail(const std::string& trouble) {
  const Ended ended = ended_;
  stop();
  if (ended) ended(trouble);
}

void Microphone::stop() {
  samples_ = nullptr;
  ended_ = nullptr;
  silence_.stop();
  silence_.disconnect();
  stream_ = nullptr;
  if (!source_) return;
  source_->disconnect(&context_);
  source_->stop();
  source_.release()->deleteLater();  // it may be the one that called
}

}  // namespace homewarden::speech
