#include "web/token_settings.h"

#include <algorithm>
#include <utility>

#include "base/code_page.h"
#include "base/text.h"
#include "core/asking.h"
#include "core/dates.h"

namespace homewarden {
namespace {

const char* const kNotice = "the tokens of programs";

// A damaged one may have lost its name, or have one that nobody can read.
std::string title(const TokenStore::Entry& entry) {
  if (!entry.is_damaged) return entry.name;
  const std::string name = on_one_line(entry.name, TokenStore::kLongestName);
  return "Damaged token " + std::to_string(entry.place) + (name.empty() ? "" : " (" + name + ")");
}

TokenFace face_of(const TokenStore::Entry& entry) {
  TokenFace face{entry.place, title(entry), "", "", entry.is_damaged};
  if (entry.is_damaged) {
    face.right = "Lets nobody in";
    face.dates = "Revoke it, and make a new one for the program that used it";
    return face;
  }
  face.right = entry.may_change ? kTokenDoes : kTokenReads;
  const std::string made = entry.made.substr(0, entry.made.find(' '));
  face.dates =
      "Made on " + made + (entry.used.empty() ? ", not used yet" : ", last used on " + entry.used);
  return face;
}

std::string notice_of(const std::vector<TokenStore::Entry>& entries) {
  std::string names;
  for (const auto& entry : entries)
    if (entry.is_damaged) names += (names.empty() ? "" : ", ") + title(entry);
  if (names.empty()) return "";
  return "Stored tokens cannot be understood and let no program in: " + names +
         ". Revoke them on the panel \"Web Server\".";
}

}  // namespace

TokenSettings::TokenSettings(WebPanel& panel, ProgramTimers& timers, Operations& operations,
                             const Clock& clock, Settings& settings, Registry& registry,
                             Dialogs& dialogs, Notices& notices, WebServerControl& web)
    : panel_(panel),
      clock_(clock),
      settings_(settings),
      registry_(registry),
      dialogs_(dialogs),
      notices_(notices),
      web_(web),
      store_(settings) {
  registry.changed.connect([this](RegistryRoot root) {
    if (root == RegistryRoot::kCurrentUser) look();
  });
  timers.statetimer.tick.connect([this] { look(); });
  web.ApiRequestArrived.connect(
      [this](int, const ApiRequest& request) { note_use(request.token); });
  panel.Frame4.visible.changed.connect([this] {
    if (!panel_.Frame4.visible) forget_new();
  });
  panel.cmd_maketoken.click.connect([this, &operations] { operations.start(make()); });
  panel.revoke_asked.connect([this, &operations](int place) { operations.start(revoke(place)); });
  look();
}

// Tokens that were taken up stay as long as the settings cannot be read.
void TokenSettings::look() {
  if (!settings_.are_known()) return;
  const std::uint64_t changes = registry_.changes(RegistryRoot::kCurrentUser);
  if (seen_ == changes) return;
  seen_ = changes;
  take_up();
}

void TokenSettings::take_up() {
  entries_ = store_.entries();
  std::vector<ApiToken> tokens;
  for (const auto& entry : entries_)
    if (!entry.is_damaged) tokens.push_back({to_utf8(entry.name), entry.hash, entry.may_change});
  if (told_ != tokens) {
    told_ = std::move(tokens);
    web_.Tokens(*told_);
  }
  notices_.tell(kNotice, notice_of(entries_));
  show();
}

void TokenSettings::show() {
  std::vector<TokenFace> faces;
  for (const auto& entry : entries_) faces.push_back(face_of(entry));
  panel_.tokenfaces = std::move(faces);
}

void TokenSettings::forget_new() {
  new_one_ = 0;
  panel_.show_new_token({}, {});
}

void TokenSettings::note_use(const std::string& token) {
  if (token.empty()) return;
  const auto entry = std::find_if(entries_.begin(), entries_.end(), [&token](const auto& known) {
    return !known.is_damaged && to_utf8(known.name) == token;
  });
  if (entry == entries_.end()) return;
  const auto today = std::chrono::floor<std::chrono::days>(date_of(clock_.local_time()));
  if (entry->used == text_of(today)) return;
  store_.note_use(*entry, today);
  entry->used = text_of(today);
  show();
}

Task<void> TokenSettings::make() {
  const std::string name(trim_blanks(panel_.txt_tokenname.text.get()));
  std::string trouble = settings_.are_known()
                            ? store_.name_trouble(name)
                            : "The settings cannot be read now, so that no token can be made. "
                              "The home page says why.";
  const NewToken made = trouble.empty() ? web_.new_token() : NewToken{};
  if (trouble.empty() && made.secret.empty())
    trouble = "Sorry, the system gave no random numbers. No token has been made.";
  if (!trouble.empty()) {
    co_await tell_error(dialogs_, std::move(trouble));
    panel_.txt_tokenname.set_focus();
    co_return;
  }
  new_one_ = store_.add(name, made.hash, panel_.com_tokenright.text.get() == kTokenDoes,
                        minute_of(clock_.local_time()));
  take_up();
  panel_.txt_tokenname.text = std::string();
  panel_.com_tokenright.text = kTokenReads;
  std::string words =
      "This is the token \"" + name +
      "\". It is shown now and not again: copy it to the program that is to use it.";
  if (registry_.state(RegistryRoot::kCurrentUser).trouble != StoreTrouble::kNone)
    words +=
        " Until the settings can be written to the disk it is kept in memory only: the home page "
        "says why.";
  panel_.show_new_token(made.secret, words);
  panel_.txt_newtoken.set_focus();
}

// Another program may have put another token in the place while the question was open.
Task<void> TokenSettings::revoke(int place) {
  const auto at_place = [place](const auto& entry) { return entry.place == place; };
  const auto asked = std::find_if(entries_.begin(), entries_.end(), at_place);
  if (asked == entries_.end()) co_return;
  const std::string hash = asked->hash;
  const bool sure =
      co_await ask(dialogs_,
                   "Do you really want to revoke \"" + title(*asked) +
                       "\"? The program that uses it is not let in any more, from this moment on.",
                   "Sure?", Answer::kNo);
  if (!sure) co_return;
  look();
  const auto found = std::find_if(entries_.begin(), entries_.end(), at_place);
  if (found == entries_.end() || found->hash != hash) co_return;
  store_.remove(place);
  if (place == new_one_) forget_new();
  take_up();
}

}  // namespace homewarden
