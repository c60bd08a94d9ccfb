#include "voice/agent.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <memory>
#include <optional>

#include "base/text.h"
#include "voice/character_file.h"
#include "voice/command_groups.h"

namespace homewarden {
namespace {

// Decibels as the recogniser counts them.
constexpr double kQuiet = 20;
constexpr double kLoud = 85;
constexpr std::size_t kMostWords = 80;  // letters of what was heard
constexpr int kFarthestPlace = 32767;   // no screen is wider

int percent_of(double level) {
  return static_cast<int>(
      std::lround(std::clamp((level - kQuiet) / (kLoud - kQuiet), 0.0, 1.0) * 100));
}

std::optional<FigurePlace> place_in(const std::string& text) {
  const auto comma = text.find(',');
  if (comma == std::string::npos) return {};
  FigurePlace place;
  const char* end = text.data() + text.size();
  const auto left = std::from_chars(text.data(), text.data() + comma, place.left);
  const auto top = std::from_chars(text.data() + comma + 1, end, place.top);
  const bool is_whole = left.ec == std::errc() && left.ptr == text.data() + comma &&
                        top.ec == std::errc() && top.ptr == end;
  const auto is_far = [](int at) { return at < -kFarthestPlace || at > kFarthestPlace; };
  if (!is_whole || is_far(place.left) || is_far(place.top)) return {};
  return place;
}

}  // namespace

Agent::Agent(FrmCharacter& figure, FrmSpeechSheet& sheet, Recogniser& recogniser,
             Microphones& microphones, Files& files, Settings& settings, EventLoop& loop,
             std::filesystem::path folder)
    : figure_(figure),
      form_(sheet),
      recogniser_(recogniser),
      files_(files),
      settings_(settings),
      loop_(loop),
      folder_(std::move(folder)),
      talk_(figure, loop),
      sheet_(sheet, recogniser, microphones, settings) {
  connect_recogniser();
  figure.command_chosen.connect([this](int number) {
    for (const auto& [its_number, command] : commands_)
      if (its_number == number) post([this, chosen = command] { Command(chosen); });
  });
  figure.cmd_hide.click.connect([this] { Hide(); });
  figure.place.changed.connect([this] {
    const auto& place = figure_.place.get();
    if (place)
      settings_.write("agent", "Place",
                      std::to_string(place->left) + "," + std::to_string(place->top));
  });
  sheet.cmd_test.click.connect([this] { test(); });
  sheet.visible.changed.connect([this] {
    if (!form_.visible && purpose_ == Purpose::kTest) recogniser_.stop();
  });
  sheet_.spoken_as_changed.connect([this] { commands_changed(); });
}

Agent::~Agent() {
  for (const EventLoop::CallId call : posted_) loop_.cancel(call);
}

void Agent::connect_recogniser() {
  recogniser_.began.connect([this] { began(); });
  recogniser_.ended.connect(
      [this](homewarden::ListenEnd how, const std::string& trouble) { ended(how, trouble); });
  recogniser_.heard.connect([this](const Heard& what) { heard(what); });
  recogniser_.level.connect([this](double decibels) {
    form_.level = percent_of(decibels);
    Level(form_.level);
  });
}

std::string Agent::Load(const std::string& name, const std::string& file) {
  const auto content = files_.read(folder_ / file);
  if (!content)
    return files_.exists(folder_ / file)
               ? "The character file \"" + file + "\" cannot be read."
               : "There is no character file \"" + file + "\" beside the other data.";
  CharacterFile read = read_character(*content);
  if (!read.figure) return "The character file \"" + file + "\" is damaged: " + read.trouble + ".";
  figure_.figure = std::make_shared<const Figure>(std::move(*read.figure));
  name_ = name;
  sheet_.read();
  const auto place = place_in(settings_.read("agent", "Place", ""));
  if (place) figure_.place = place;
  return "";
}

AgentCharacter* Agent::Character(const std::string& name) {
  return !name_.empty() && name == name_ ? this : nullptr;
}

void Agent::RemoveAll() {
  commands_.clear();
  commands_changed();
}

void Agent::Add(const VoiceCommand& command) {
  commands_.emplace_back(++last_number_, command);
  commands_changed();
}

// A house is registered command by command; it counts when all of it is.
void Agent::commands_changed() {
  if (changing_) return;
  changing_ = true;
  post([this] {
    changing_ = false;
    pass_commands_on();
  });
}

void Agent::pass_commands_on() {
  std::vector<VoiceCommand> commands;
  std::vector<std::string> names;
  for (const auto& [number, command] : commands_) {
    if (command.enabled) commands.push_back(command);
    const auto spoken = spoken_names(command);
    if (spoken) names.insert(names.end(), {spoken->room, spoken->device});
  }
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  recogniser_.set_commands(std::move(commands), sheet_.spoken_as(names));
  figure_.list = group_commands(commands_);
}

void Agent::Listen(bool listen) {
  if (listen)
    listen_for(Purpose::kCommand);
  else if (purpose_ == Purpose::kCommand)
    recogniser_.stop();
}

void Agent::test() {
  if (!recogniser_.is_listening())
    listen_for(Purpose::kTest);
  else if (purpose_ == Purpose::kTest)
    recogniser_.stop();
}

void Agent::listen_for(Purpose purpose) {
  if (recogniser_.is_listening()) return;
  purpose_ = purpose;
  recogniser_.listen();
}

void Agent::began() {
  if (purpose_ == Purpose::kTest) {
    form_.cmd_test.caption = "Stop";
    form_.lab_tested.caption = "Say a command";
    return;
  }
  form_.cmd_test.enabled = false;
  talk_.listen();
  post([this] { ListenStart(name_); });
}

void Agent::ended(homewarden::ListenEnd how, const std::string& trouble) {
  form_.level = 0;
  Level(0);
  form_.cmd_test.caption = "Test";
  form_.cmd_test.enabled = true;
  if (purpose_ == Purpose::kTest) {
    form_.lab_tested.caption = how == homewarden::ListenEnd::kTrouble   ? trouble
                               : how == homewarden::ListenEnd::kNothing ? "Nothing was said."
                                                                        : "";
    return;
  }
  if (how != homewarden::ListenEnd::kUtterance) talk_.be_idle();
  ListenEnd();
  if (how == homewarden::ListenEnd::kNothing) refuse("");
  if (how != homewarden::ListenEnd::kTrouble) return;
  talk_.say(trouble, Pose::kNotUnderstood);
  listening_failed(trouble);
}

void Agent::heard(const Heard& heard) {
  if (purpose_ == Purpose::kTest) return sheet_.show_tested(heard);
  switch (heard.verdict) {
    case Heard::Verdict::kAccepted:
      talk_.say(heard.command.caption, Pose::kUnderstood);
      Command(heard.command);
      return;
    case Heard::Verdict::kNearly:
      ask(heard);
      return;
    case Heard::Verdict::kRefused:
      // A command that was not heard surely enough is one all the same.
      refuse(heard.command.name.empty() ? heard.words : "");
      return;
  }
}

void Agent::ask(const Heard& heard) {
  talk_.ask("Did you mean " + heard.command.caption + "?",
            [this, command = heard.command](bool yes) {
              if (!yes) {
                not_understood("");
                return;
              }
              talk_.say(command.caption, Pose::kUnderstood);
              Command(command);
            });
}

void Agent::refuse(const std::string& words) {
  talk_.say(words.empty()
                ? "I did not understand that."
                : "I heard \"" + on_one_line(words, kMostWords) + "\", which is no command.",
            Pose::kNotUnderstood);
  not_understood(words);
}

// While it listens it looks so, and "done" of the command before would be taken for an answer.
void Agent::Speak(const std::string& text, Mood mood) {
  const bool well = mood == Mood::kUnderstood;
  if (!recogniser_.is_listening() || purpose_ != Purpose::kCommand)
    talk_.say(text, well ? Pose::kUnderstood : Pose::kNotUnderstood);
  else if (!well)
    talk_.mention(text);
}

void Agent::post(std::function<void()> function) {
  const auto call = std::make_shared<EventLoop::CallId>(0);
  *call = loop_.call_after({}, [this, call, function = std::move(function)] {
    posted_.erase(*call);
    function();
  });
  posted_.insert(*call);
}

}  // namespace homewarden
