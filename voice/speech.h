#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/operations.h"
#include "base/task.h"
#include "core/house_index.h"
#include "core/settings.h"
#include "platform/speech_agent.h"
#include "ui/controls.h"
#include "ui/panel_stack.h"
#include "ui/program_menu.h"
#include "ui/settings_panels.h"
#include "ui/shared_state.h"
#include "voice/voice_commands.h"
#include "x10/device_commands.h"
#include "x10/device_state.h"

namespace homewarden {

// The house by voice: a character that listens, the commands that it knows, and what is done when
// it has heard one. Without a character everything here does nothing.
class Speech {
 public:
  // `kept` are the panels that a reminder of how to speak does not hide.
  Speech(SpeechPanel& panel, PanelStack& panels, std::vector<Frame*> kept, ProgramMenu& menu,
         ProgramTimers& timers, StatusBar& status, Operations& operations, HouseIndex& house,
         Settings& settings, DeviceState& state, DeviceCommands& commands, SpeechAgent& agent);

  // Loads the character that the settings name, or says in the status line that it cannot. To be
  // called once.
  void initagent();

  // The commands of the house, anew: the fixed ones, then those of each device in turn.
  void begin_commands();
  void add_commands(const Device& device);

 private:
  void recognised(const VoiceCommand& command);
  void listen_started();
  void show_listening(bool listens);
  void show_reminders();
  void give_page_back();
  void hide();
  Task<void> carry_out(VoiceOrder order, std::string caption);
  Task<bool> step(SwitchTarget target, bool up);
  const Device* meant(const VoiceOrder& order, const std::string& caption) const;
  void say(const std::string& text, AgentCharacter::Mood mood);

  SpeechPanel& panel_;
  PanelStack& panels_;
  std::vector<Frame*> kept_;
  ProgramTimers& timers_;
  StatusBar& status_;
  Operations& operations_;
  HouseIndex& house_;
  Settings& settings_;
  DeviceState& state_;
  DeviceCommands& commands_;
  SpeechAgent& agent_;
  AgentCharacter* character_ = nullptr;  // once it is loaded
  VoiceCommand last_;                    // other than "repeat"
  Frame* before_ = nullptr;              // the panel that the reminders took the place of
};

}  // namespace homewarden
