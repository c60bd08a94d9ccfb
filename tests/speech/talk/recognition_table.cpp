#include "tests/speech/talk/recognition_table.h"

#include <cstdio>

#include "platform/speech/listener.h"
#include "tests/speech/talk/house_talk.h"

namespace homewarden::testing {
namespace {

constexpr double kStretches[] = {0.8, 0.9, 1, 1.1, 1.2};

const char* name_of(Surroundings surroundings) {
  switch (surroundings) {
    case Surroundings::kClean:
      return "clean";
    case Surroundings::kBabble20:
      return "babble 20 dB";
    case Surroundings::kBabble10:
      break;
  }
  return "babble 10 dB";
}

Sound surrounded(const Sound& speech, Surroundings surroundings) {
  constexpr double kBefore = 0.8;
  constexpr double kAfter = 1.2;
  if (surroundings == Surroundings::kClean) return in_a_room(speech, kBefore, kAfter);
  return in_babble(speech, kBefore, kAfter, surroundings == Surroundings::kBabble20 ? 20 : 10);
}

// The listener in the house, in this thread.
class Ear {
 public:
  Ear() : listener_(speech::installed_model(), answers()) { listener_.learn(talking_house(), {}); }

  Heard hear(const Sound& sound) {
    heard_ = {};
    listener_.begin(Strictness::kNormal);
    listener_.take(sound);
    listener_.finish("");
    return heard_;
  }

 private:
  speech::Listener::Answers answers() {
    return {[](double) {}, [](ListenEnd, const std::string&) {},
            [this](const Heard& heard) { heard_ = heard; }, [](const std::vector<GuessedName>&) {}};
  }

  Heard heard_;
  speech::Listener listener_;
};

void count(Tally& tally, const Heard& heard, const std::string& expected) {
  const bool is_own = !expected.empty() && heard.command.name == expected;
  const bool is_accepted = heard.verdict == Heard::Verdict::kAccepted;
  ++tally.said;
  tally.own += is_own;
  tally.accepted += is_own && is_accepted;
  tally.asked += heard.verdict == Heard::Verdict::kNearly;
  tally.wrong += !is_own && is_accepted;
}

class Trial {
 public:
  Trial(const std::vector<std::string>& voices, Extent extent) : voices_(voices), extent_(extent) {}

  RecognitionTable run() {
    const std::vector<VoiceCommand> commands = talking_house();
    for (const Surroundings surroundings : kSurroundings)
      for (std::size_t i = 0; i < commands.size(); ++i)
        for (const std::string& voice : voices_)
          if (is_wanted(i + static_cast<std::size_t>(surroundings), i, voice))
            count(table_.commands[voice][surroundings],
                  said(said_in_full(commands[i]), voice, i, surroundings, commands[i].name),
                  commands[i].name);
    no_commands(everyday_sentences(), table_.everyday);
    no_commands(near_misses(), table_.near);
    return table_;
  }

 private:
  bool is_wanted(std::size_t turn, std::size_t place, const std::string& voice) const {
    if (extent_ == Extent::kEverything) return true;
    if (extent_ == Extent::kFew && place % 7 != 0) return false;
    return voice == voices_[turn % voices_.size()];
  }

  void no_commands(const std::vector<std::string>& sentences, Tally& tally) {
    for (std::size_t i = 0; i < sentences.size(); ++i)
      for (const std::string& voice : voices_)
        if (is_wanted(i, i, voice))
          count(tally, said(sentences[i], voice, i, Surroundings::kClean, ""), "");
  }

  Heard said(const std::string& text, const std::string& voice, std::size_t place,
             Surroundings surroundings, const std::string& expected) {
    const double stretch = kStretches[(place + place / 5) % std::size(kStretches)];
    Heard heard = ear_.hear(surrounded(say(text, voice, stretch), surroundings));
    const bool is_accepted = heard.verdict == Heard::Verdict::kAccepted;
    if (is_accepted ? heard.command.name != expected : !expected.empty())
      table_.faults.push_back(voice + ", " + name_of(surroundings) + ": \"" + text + "\" as \"" +
                              heard.words + "\"" + (is_accepted ? "" : ", refused"));
    return heard;
  }

  const std::vector<std::string> voices_;
  const Extent extent_;
  Ear ear_;
  RecognitionTable table_;
};

void print_row(const std::string& voice, const char* what, const Tally& tally) {
  std::printf(
      "%-8s %-13s %4d said  %5.1f %% as itself  %5.1f %% carried out  %4.1f %% asked  %d wrong\n",
      voice.c_str(), what, tally.said, tally.own_share(), tally.accepted_share(),
      tally.said == 0 ? 0 : 100.0 * tally.asked / tally.said, tally.wrong);
}

void print_refused(const char* what, const Tally& tally) {
  std::printf("%-22s %4d said  %5.1f %% not carried out, of these %d asked\n", what, tally.said,
              tally.refused_share(), tally.asked);
}

}  // namespace

Tally RecognitionTable::commands_in(Surroundings surroundings) const {
  Tally sum;
  for (const auto& [voice, tallies] : commands) {
    const auto found = tallies.find(surroundings);
    if (found == tallies.end()) continue;
    sum.said += found->second.said;
    sum.own += found->second.own;
    sum.accepted += found->second.accepted;
    sum.asked += found->second.asked;
    sum.wrong += found->second.wrong;
  }
  return sum;
}

void RecognitionTable::print() const {
  for (const auto& [voice, tallies] : commands)
    for (const auto& [surroundings, tally] : tallies)
      print_row(voice, name_of(surroundings), tally);
  for (const Surroundings surroundings : kSurroundings)
    print_row("all", name_of(surroundings), commands_in(surroundings));
  print_refused("everyday sentences", everyday);
  print_refused("near misses", near);
  for (const std::string& fault : faults) std::printf("  %s\n", fault.c_str());
}

RecognitionTable recognise(const std::vector<std::string>& voices, Extent extent) {
  return Trial(voices, extent).run();
}

}  // namespace homewarden::testing
