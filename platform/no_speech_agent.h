#pragma once

#include <string>
#include <utility>

#include "platform/speech_agent.h"

namespace homewarden {

// A speech agent that has no characters: of a build without one, or of a program without a face.
class NoSpeechAgent : public SpeechAgent {
 public:
  // Why there is none, in words for a person.
  explicit NoSpeechAgent(std::string reason) : reason_(std::move(reason)) {}

  std::string Load(const std::string&, const std::string&) override { return reason_; }
  AgentCharacter* Character(const std::string&) override { return nullptr; }
  void PropertySheetVisible(bool) override {}

 private:
  std::string reason_;
};

}  // namespace homewarden
