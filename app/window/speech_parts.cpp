#include "app/window/speech_parts.h"

#include <string>
#include <utility>

#include "core/settings.h"
#include "platform/no_speech_agent.h"
#include "ui/frm_character.h"
#include "ui/frm_speech_sheet.h"
#include "ui/qt/speech_view.h"
#include "voice/agent.h"

namespace homewarden {
namespace {

class NoSpeech : public SpeechParts {
 public:
  explicit NoSpeech(std::string reason) : agent_(std::move(reason)) {}

  SpeechAgent& agent() override { return agent_; }
  std::unique_ptr<view::SpeechView> show(FrmMain& /*form*/, QWidget* /*window*/) override {
    return nullptr;
  }

 private:
  NoSpeechAgent agent_;
};

class WholeSpeech : public SpeechParts {
 public:
  WholeSpeech(SpeechEar ear, Files& files, Registry& registry, EventLoop& loop,
              const std::filesystem::path& folder)
      : ear_(std::move(ear)),
        settings_(registry),
        agent_(figure_, sheet_, *ear_.recogniser, *ear_.microphones, files, settings_, loop,
               folder) {}

  SpeechAgent& agent() override { return agent_; }
  std::unique_ptr<view::SpeechView> show(FrmMain& form, QWidget* window) override {
    return std::make_unique<view::SpeechView>(form, figure_, sheet_, window);
  }

 private:
  SpeechEar ear_;
  Settings settings_;
  FrmCharacter figure_;
  FrmSpeechSheet sheet_;
  Agent agent_;
};

}  // namespace

std::unique_ptr<SpeechParts> make_speech(SpeechEar ear, Files& files, Registry& registry,
                                         EventLoop& loop, const std::filesystem::path& folder) {
  if (!ear.recogniser) return std::make_unique<NoSpeech>(ear.trouble);
  return std::make_unique<WholeSpeech>(std::move(ear), files, registry, loop, folder);
}

}  // namespace homewarden
