#pragma once

#include <string>

#include "base/signal.h"
#include "platform/voice_command.h"

namespace homewarden {

// What a character answers to. Texts are in the system code page.
class CommandList {
 public:
  virtual ~CommandList() = default;

  virtual void Caption(const std::string& caption) = 0;
  virtual void Visible(bool visible) = 0;
  // Both count from the next listening on, at the latest. Several commands may have one name.
  virtual void RemoveAll() = 0;
  virtual void Add(const VoiceCommand& command) = 0;
};

// The figure that listens and answers.
class AgentCharacter {
 public:
  // How it looks while it says something.
  enum class Mood { kUnderstood, kNotUnderstood };

  virtual ~AgentCharacter() = default;

  // A Windows language number; 1033 is US English, the only one that is understood.
  virtual void LanguageID(int language) = 0;
  virtual void SoundEffectsOn(bool on) = 0;
  virtual CommandList& Commands() = 0;
  virtual void Show() = 0;
  virtual void Hide() = 0;
  // Begins to listen, or gives up. What cannot listen, having no microphone or no model, says so in
  // `SpeechAgent::listening_failed`. Returns at once.
  virtual void Listen(bool listen) = 0;
  // Shows what it has to say beside the figure, if that is shown.
  virtual void Speak(const std::string& text, Mood mood) = 0;
};

// The speech agent: characters that can be loaded, what they hear, and their settings. Signals are
// raised on the thread of the event loop, from within no call but Listen().
class SpeechAgent {
 public:
  virtual ~SpeechAgent() = default;

  // Loads a character under a name, from a file; a relative one lies beside the program. Returns
  // what is wrong, in words for a person, or "". Loading one again replaces it.
  virtual std::string Load(const std::string& name, const std::string& file) = 0;
  // nullptr when none of this name was loaded.
  virtual AgentCharacter* Character(const std::string& name) = 0;
  // The property sheet: microphone, key, strictness.
  virtual void PropertySheetVisible(bool visible) = 0;

  Signal<const VoiceCommand&> Command;     // it was said and understood, or chosen from the list
  Signal<const std::string&> ListenStart;  // a character, by its name, listens from now on
  Signal<> ListenEnd;                      // no more, whatever was heard
  // While it listens, some 20 times a second: how loud it is, in percent of what is too loud.
  Signal<int> Level;
  // What was heard and is no command, as far as it could be told; "" for something that no word of
  // the house was found in.
  Signal<const std::string&> not_understood;
  Signal<const std::string&> listening_failed;  // why, in words for a person
};

}  // namespace homewarden
