#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/speech_agent.h"

namespace homewarden::testing {

// A character of which is written down what it is told.
class FakeCharacter : public AgentCharacter, public CommandList {
 public:
  void LanguageID(int language) override {
    calls.push_back("language " + std::to_string(language));
  }
  void SoundEffectsOn(bool on) override { calls.push_back(on ? "sounds" : "no sounds"); }
  CommandList& Commands() override { return *this; }
  void Caption(const std::string& caption) override { calls.push_back("caption " + caption); }
  void Visible(bool visible) override { calls.push_back(visible ? "list" : "no list"); }
  void RemoveAll() override { list.clear(); }
  void Add(const VoiceCommand& command) override { list.push_back(command); }
  void Show() override { calls.push_back("show"); }
  void Hide() override { calls.push_back("hide"); }
  void Listen(bool listen) override { calls.push_back(listen ? "listen" : "give up"); }
  void Speak(const std::string& text, Mood) override { said.push_back(text); }

  std::vector<VoiceCommand> list;
  std::vector<std::string> calls;
  std::vector<std::string> said;
};

class FakeSpeech : public SpeechAgent {
 public:
  std::string Load(const std::string& name, const std::string& file) override {
    loaded.push_back(name + " from " + file);
    if (trouble.empty()) characters[name];
    return trouble;
  }
  AgentCharacter* Character(const std::string& name) override {
    const auto found = characters.find(name);
    return found == characters.end() ? nullptr : &found->second;
  }
  void PropertySheetVisible(bool visible) override { sheet_is_shown = visible; }

  // What a person says, by the name of the command: the first of the list that has it.
  bool say(const std::string& name) {
    for (auto& [character, one] : characters)
      for (const VoiceCommand& command : one.list)
        if (command.name == name) {
          const VoiceCommand heard = command;
          Command(heard);
          return true;
        }
    return false;
  }

  std::map<std::string, FakeCharacter> characters;
  std::vector<std::string> loaded;
  std::string trouble;  // of the loads that follow
  bool sheet_is_shown = false;
};

}  // namespace homewarden::testing
