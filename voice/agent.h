#pragma once

#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "core/settings.h"
#include "platform/event_loop.h"
#include "platform/files.h"
#include "platform/microphones.h"
#include "platform/recogniser.h"
#include "platform/speech_agent.h"
#include "ui/frm_character.h"
#include "ui/frm_speech_sheet.h"
#include "voice/figure_talk.h"
#include "voice/speech_sheet.h"

namespace homewarden {

// The speech agent made of a recogniser and a drawn figure. It has one character at a time.
class Agent : public SpeechAgent, private AgentCharacter, private CommandList {
 public:
  // Files of characters lie in the folder.
  Agent(FrmCharacter& figure, FrmSpeechSheet& sheet, Recogniser& recogniser,
        Microphones& microphones, Files& files, Settings& settings, EventLoop& loop,
        std::filesystem::path folder);
  Agent(const Agent&) = delete;
  Agent& operator=(const Agent&) = delete;
  ~Agent() override;

  std::string Load(const std::string& name, const std::string& file) override;
  AgentCharacter* Character(const std::string& name) override;
  void PropertySheetVisible(bool visible) override { sheet_.show(visible); }

 private:
  enum class Purpose { kCommand, kTest };

  void LanguageID(int /*language*/) override {}
  void SoundEffectsOn(bool /*on*/) override {}
  CommandList& Commands() override { return *this; }
  void Show() override { talk_.show(); }
  void Hide() override { talk_.hide(); }
  void Listen(bool listen) override;
  void Speak(const std::string& text, Mood mood) override;
  void Caption(const std::string& caption) override { figure_.list_caption = caption; }
  void Visible(bool visible) override { figure_.list_visible = visible; }
  void RemoveAll() override;
  void Add(const VoiceCommand& command) override;

  void connect_recogniser();
  void commands_changed();
  void pass_commands_on();
  void test();
  void listen_for(Purpose purpose);
  void began();
  void ended(homewarden::ListenEnd how, const std::string& trouble);
  void heard(const Heard& heard);
  void ask(const Heard& heard);
  void refuse(const std::string& words);
  void post(std::function<void()> function);

  FrmCharacter& figure_;
  FrmSpeechSheet& form_;
  Recogniser& recogniser_;
  Files& files_;
  Settings& settings_;
  EventLoop& loop_;
  std::filesystem::path folder_;
  FigureTalk talk_;
  SpeechSheet sheet_;
  std::string name_;                                    // of the character; "" before one is loaded
  std::vector<std::pair<int, VoiceCommand>> commands_;  // with the numbers they are chosen by
  int last_number_ = 0;  // a number is never used again: a menu may be older than the commands
  bool changing_ = false;
  Purpose purpose_ = Purpose::kCommand;  // of what is being listened to, or was last
  std::set<EventLoop::CallId> posted_;
};

}  // namespace homewarden
