#include "app/window/speech_ear.h"

#include <functional>
#include <utility>

#include "platform/speech/microphone.h"
#include "platform/speech/speech_recogniser.h"

namespace homewarden {
namespace {

// The microphone must outlive the recogniser that listens with it.
struct Ear : Microphones {
  std::vector<MicrophoneName> names() override { return speech::microphones(); }
  void choose(const std::string& id) override { microphone.choose(id); }

  speech::Microphone microphone;
  std::unique_ptr<Recogniser> recogniser;
};

}  // namespace

SpeechEar find_ear(qt::QtLoop& loop) {
  std::string trouble = speech::recognition_trouble();
  if (!trouble.empty()) return {std::move(trouble), nullptr, nullptr};
  const auto ear = std::make_shared<Ear>();
  ear->recogniser = speech::make_recogniser(
      [&loop](std::function<void()> function) { loop.post(std::move(function)); }, ear->microphone);
  return {"", ear, std::shared_ptr<Recogniser>(ear, ear->recogniser.get())};
}

}  // namespace homewarden
