#include "voice/speech_sheet.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "base/text.h"

namespace homewarden {
namespace {

constexpr const char* kSection = "agent";
constexpr const char* kSpoken = "spoken";
constexpr std::array<const char*, 3> kStrictness = {"strict", "normal", "lenient"};
constexpr std::array<const char*, 3> kMeaning = {
    "Does only what it is very sure of", "Asks when it is not quite sure",
    "Does what comes nearest; for a voice that is often refused"};

}  // namespace

SpeechSheet::SpeechSheet(FrmSpeechSheet& form, Recogniser& recogniser, Microphones& microphones,
                         Settings& settings)
    : form_(form), recogniser_(recogniser), microphones_(microphones), settings_(settings) {
  form.lst_microphone.selected.changed.connect([this] { choose_microphone(); });
  form.lst_strictness.selected.changed.connect([this] { choose_strictness(); });
  form.key.changed.connect([this] {
    settings_.write(kSection, "Key", form_.key);
    show_reach();
  });
  form.key_reach.changed.connect([this] { show_reach(); });
  form.key_refused.connect([this] {
    form_.lab_key.caption = "Choose a key that writes nothing, such as F9 or Ctrl+Alt+L";
  });
  form.respelled.connect(
      [this](const std::string& name, const std::string& spoken) { respell(name, spoken); });
  recogniser.guessed.connect([this](const std::vector<GuessedName>& names) {
    guessed_ = names;
    show_guessed();
  });
  show_reach();
}

void SpeechSheet::read() {
  const std::string strictness = settings_.read(kSection, "Strictness", "normal");
  const auto* const known = std::find(kStrictness.begin(), kStrictness.end(), strictness);
  form_.lst_strictness.selected =
      known == kStrictness.end() ? 1 : static_cast<int>(known - kStrictness.begin());
  form_.key = settings_.read(kSection, "Key", "");
  microphones_.choose(settings_.read(kSection, "Microphone", ""));
}

void SpeechSheet::show(bool visible) {
  if (visible) {
    show_microphones();
    recogniser_.prepare();
    form_.raised();
  }
  form_.visible = visible;
}

// One that is chosen and not there now stays chosen: it may be plugged in again.
void SpeechSheet::show_microphones() {
  const std::string chosen = settings_.read(kSection, "Microphone", "");
  shown_ = {{"", "The desktop's microphone"}};
  for (MicrophoneName& one : microphones_.names()) shown_.push_back(std::move(one));
  auto found = std::find_if(shown_.begin(), shown_.end(),
                            [&chosen](const MicrophoneName& one) { return one.id == chosen; });
  if (found == shown_.end())
    found = shown_.insert(shown_.end(), {chosen, "The one chosen before, not connected"});
  std::vector<std::string> names;
  for (const MicrophoneName& one : shown_) names.push_back(one.name);
  showing_ = true;
  form_.lst_microphone.selected = -1;
  form_.lst_microphone.items = std::move(names);
  form_.lst_microphone.selected = static_cast<int>(found - shown_.begin());
  showing_ = false;
}

void SpeechSheet::choose_microphone() {
  const int place = form_.lst_microphone.selected;
  if (showing_ || place < 0 || place >= static_cast<int>(shown_.size())) return;
  const std::string id = shown_[static_cast<std::size_t>(place)].id;
  settings_.write(kSection, "Microphone", id);
  microphones_.choose(id);
}

void SpeechSheet::choose_strictness() {
  const int place = form_.lst_strictness.selected;
  if (place < 0 || place >= static_cast<int>(kStrictness.size())) return;
  const auto at = static_cast<std::size_t>(place);
  form_.lab_strictness.caption = kMeaning[at];
  recogniser_.set_strictness(static_cast<Strictness>(place));
  if (settings_.read(kSection, "Strictness", "normal") != kStrictness[at])
    settings_.write(kSection, "Strictness", kStrictness[at]);
}

void SpeechSheet::show_reach() {
  switch (form_.key_reach.get()) {
    case KeyReach::kEverywhere:
      form_.lab_key.caption = "Works whichever window you are in";
      break;
    case KeyReach::kTaken:
      form_.lab_key.caption =
          "One of these keys works in this window only: something else has it elsewhere";
      break;
    case KeyReach::kWindow:
      form_.lab_key.caption = "Works in this window only";
      break;
  }
}

SpokenAs SpeechSheet::spoken_as(const std::vector<std::string>& names) {
  respelled_.clear();
  for (const std::string& name : names) {
    std::string spoken = settings_.read(kSpoken, name, "");
    if (!spoken.empty()) respelled_[name] = std::move(spoken);
  }
  show_guessed();
  return respelled_;
}

// What was respelled is listed too, for who wants to take it back.
void SpeechSheet::show_guessed() {
  std::vector<GuessedFace> shown;
  for (const auto& [name, spoken] : respelled_) shown.push_back({name, "", spoken});
  for (const GuessedName& one : guessed_) {
    std::string words;
    for (const std::string& word : one.words) words += (words.empty() ? "" : ", ") + word;
    const auto same = std::find_if(shown.begin(), shown.end(), [&one](const GuessedFace& face) {
      return face.name == one.name;
    });
    if (same == shown.end())
      shown.push_back({one.name, std::move(words), ""});
    else
      same->words = std::move(words);
  }
  std::sort(shown.begin(), shown.end(), [](const GuessedFace& a, const GuessedFace& b) {
    return sorts_before(a.name, b.name);
  });
  form_.guessed = std::move(shown);
}

void SpeechSheet::respell(const std::string& name, const std::string& spoken) {
  const std::string text(trim_blanks(spoken));
  if (settings_.read(kSpoken, name, "") == text) return;
  if (text.empty())
    settings_.remove(kSpoken, name);
  else
    settings_.write(kSpoken, name, text);
  spoken_as_changed();
}

void SpeechSheet::show_tested(const Heard& heard) {
  const std::string& what = heard.command.caption.empty() ? heard.words : heard.command.caption;
  switch (heard.verdict) {
    case Heard::Verdict::kAccepted:
      form_.lab_tested.caption = "Heard \"" + what + "\", surely enough to do it.";
      return;
    case Heard::Verdict::kNearly:
      form_.lab_tested.caption = "Heard \"" + what + "\", not quite surely: it would ask.";
      return;
    case Heard::Verdict::kRefused:
      form_.lab_tested.caption =
          heard.words.empty()
              ? "Heard nothing that the house knows."
              : "Heard \"" + heard.words + "\", too unsurely, or no command: it would do nothing.";
      return;
  }
}

}  // namespace homewarden
