#include "voice/speech.h"

#include <algorithm>
#include <utility>

namespace homewarden {
namespace {

using Mood = AgentCharacter::Mood;
using What = VoiceOrder::What;

constexpr int kUsEnglish = 1033;  // as Windows numbers languages
constexpr int kHideAfter = 20000;
constexpr int kFullyOn = 100;
constexpr int kStep = 20;  // percent, of turndim() and turnbright()
// A lamp at the bottom of its range is dark and yet on; 0 is what an "off" is recorded with.
constexpr int kDarkest = 1;

}  // namespace

Speech::Speech(SpeechPanel& panel, PanelStack& panels, std::vector<Frame*> kept, ProgramMenu& menu,
               ProgramTimers& timers, StatusBar& status, Operations& operations, HouseIndex& house,
               Settings& settings, DeviceState& state, DeviceCommands& commands, SpeechAgent& agent)
    : panel_(panel),
      panels_(panels),
      kept_(std::move(kept)),
      timers_(timers),
      status_(status),
      operations_(operations),
      house_(house),
      settings_(settings),
      state_(state),
      commands_(commands),
      agent_(agent) {
  agent.Command.connect([this](const VoiceCommand& command) { recognised(command); });
  agent.ListenStart.connect([this](const std::string&) { listen_started(); });
  agent.ListenEnd.connect([this] { show_listening(false); });
  agent.Level.connect([&panel](int level) { panel.listen_level = level; });
  agent.not_understood.connect([this](const std::string& words) {
    panel_.lab_heard.caption =
        words.empty() ? "Not understood." : "Heard \"" + words + "\", which is no command.";
  });
  agent.listening_failed.connect([this](const std::string& reason) {
    panel_.lab_heard.caption = reason;
    status_.panel2 = reason;
  });
  timers.timerhide.tick.connect([this] { hide(); });
  const auto listen = [this] {
    if (character_) character_->Listen(!panel_.listening);
  };
  panel.cmd_listen.click.connect(listen);
  panel.cmd_speechpage.click.connect([&panel, &panels] { panels.show_only(panel.Frame3); });
  panel.cmd_speechproperties.click.connect([&agent] { agent.PropertySheetVisible(true); });
  menu.mnu_listen.click.connect(listen);
  for (MenuEntry* entry : {&menu.mnu_listen, &menu.mnu_line1}) {
    entry->visible = false;
    panel.cmd_listen.visible.changed.connect(
        [entry, &panel] { entry->visible = panel.cmd_listen.visible.get(); });
  }
}

void Speech::initagent() {
  const std::string name = settings_.read("agent", "LastCharacter", "merlin");
  const std::string trouble = agent_.Load(name, name + ".acs");
  AgentCharacter* character = trouble.empty() ? agent_.Character(name) : nullptr;
  panel_.lab_trouble.caption = trouble;
  if (!character) {
    panel_.lab_voicestate.caption = "No voice";
    status_.panel2 = "Cannot load MsAgent Character, see help file for more.";
    return;
  }
  character->LanguageID(kUsEnglish);
  character->SoundEffectsOn(false);
  character->Commands().Caption("Homewarden");
  character->Commands().Visible(true);
  status_.panel2 = "MsAgent Character has loaded";
  character_ = character;
  for (Button* button : {&panel_.cmd_listen, &panel_.cmd_speechproperties, &panel_.cmd_commands})
    button->visible = true;
  show_listening(false);
}

void Speech::begin_commands() {
  if (!character_) return;
  character_->Commands().RemoveAll();
  for (const VoiceCommand& command : fixed_voice_commands()) character_->Commands().Add(command);
}

void Speech::add_commands(const Device& device) {
  if (!character_) return;
  for (const VoiceCommand& command : voice_commands_of(device)) character_->Commands().Add(command);
}

void Speech::recognised(const VoiceCommand& command) {
  if (command.name == kPropertiesCommand) agent_.PropertySheetVisible(true);
  if (command.name != kRepeatCommand) last_ = command;
  panel_.lab_heard.caption = "Heard: " + command.caption;
  give_page_back();
  const std::optional<VoiceOrder> order = voice_order(last_.name);
  if (order)
    operations_.start(carry_out(*order, last_.caption));
  else if (command.name == kRepeatCommand)
    say("There is no command to repeat", Mood::kNotUnderstood);
}

Task<void> Speech::carry_out(VoiceOrder order, std::string caption) {
  const Device* device = meant(order, caption);
  SwitchTarget target{order.house_code, order.unit, device ? device->key() : std::string()};
  bool sent = false;
  if (order.what == What::kOn)
    sent = co_await commands_.turnon(std::move(target), kFullyOn, Source::kVoice);
  else if (order.what == What::kOff)
    sent = co_await commands_.turnoff(std::move(target), Source::kVoice);
  else
    sent = co_await step(std::move(target), order.what == What::kBright);
  if (sent)
    say(caption, Mood::kUnderstood);
  else
    say("Not sent: " + caption, Mood::kNotUnderstood);
}

// The steps change what is recorded as far as it is known: the lamp is where the steps have brought
// it to. One that is off takes no notice of Dim and comes up fully at Bright; an appliance module
// takes notice of neither.
Task<bool> Speech::step(SwitchTarget target, bool up) {
  const std::string key = target.key;
  bool sent = false;
  if (up)
    sent = co_await commands_.turnbright(std::move(target), Source::kVoice);
  else
    sent = co_await commands_.turndim(std::move(target), Source::kVoice);
  const bool is_known = sent && !key.empty() && !state_.not_sent(key);
  if (!is_known || !house_.type_of(key).dimmable) co_return sent;
  const bool was_on = state_.getlaststatus(key);
  if (!was_on && !up) co_return sent;
  const int from = was_on ? state_.level(key) : kFullyOn;
  const int level = std::clamp(from + (up ? kStep : -kStep), kDarkest, kFullyOn);
  state_.setstatus(key, {true, level}, Source::kVoice);
  co_return sent;
}

// Of several devices at one address the one that was spoken of.
const Device* Speech::meant(const VoiceOrder& order, const std::string& caption) const {
  for (const Device& device : house_.devices()) {
    if (device.house_code != order.house_code || device.unit != order.unit) continue;
    const auto commands = voice_commands_of(device);
    if (std::any_of(commands.begin(), commands.end(),
                    [&caption](const VoiceCommand& one) { return one.caption == caption; }))
      return &device;
  }
  return house_.by_address(order.house_code, order.unit);
}

void Speech::listen_started() {
  if (!character_) return;
  character_->Show();
  show_reminders();
  status_.panel2 = "PLEASE SPEAK YOUR COMMAND CLEARLY";
  timers_.timerhide.set_interval(0);
  timers_.timerhide.set_enabled(false);
  timers_.timerhide.set_enabled(true);
  timers_.timerhide.set_interval(kHideAfter);
  show_listening(true);
}

void Speech::show_listening(bool listens) {
  panel_.listening = listens;
  panel_.cmd_listen.caption = listens ? "Listening" : "Listen";
  panel_.lab_voicestate.caption = listens ? "Listening" : "Ready to listen";
}

void Speech::show_reminders() {
  if (!panel_.Frame3.visible) before_ = panels_.shown();
  panel_.Frame3.visible = true;
  for (Frame* other : panels_.panels)
    if (other != &panel_.Frame3 && std::find(kept_.begin(), kept_.end(), other) == kept_.end())
      other->visible = false;
}

// Whoever has gone elsewhere meanwhile stays there.
void Speech::give_page_back() {
  if (panel_.Frame3.visible && before_) panels_.show_only(*before_);
  before_ = nullptr;
}

void Speech::hide() {
  if (character_) character_->Hide();
  give_page_back();
}

void Speech::say(const std::string& text, Mood mood) {
  if (character_) character_->Speak(text, mood);
}

}  // namespace homewarden
