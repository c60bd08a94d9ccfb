#include "automation/profile_switch.h"

#include <utility>

#include "base/text.h"
#include "core/replace_file.h"

namespace homewarden {
namespace {

const char* const kActive = "profile";
const char* const kStagedFor = "profileswitch";  // the profile that `profile.tmp` belongs to
const char* const kLeft = "profileleft";         // the one that was active then
const char* const kDefaultProfile = "Standard";

bool could_be_a_file(std::string_view name) {
  constexpr std::string_view kScratch[] = {"temp", "tempmac"};
  for (const std::string_view scratch : kScratch)
    if (equals_ignoring_case(name, scratch)) return false;
  return !name.empty() && name.find_first_of("/\\:") == std::string_view::npos &&
         name.front() != '.';
}

}  // namespace

ProfileSwitch::ProfileSwitch(Files& files, Settings& settings, Module1& module1, ListFile& events,
                             std::filesystem::path folder)
    : files_(files),
      settings_(settings),
      module1_(module1),
      events_(events),
      folder_(std::move(folder)),
      staged_(folder_ / "profile.tmp") {}

std::string ProfileSwitch::active() const {
  std::string name = settings_.read("data", kActive, kDefaultProfile);
  return could_be_a_file(name) ? name : kDefaultProfile;
}

std::optional<std::string> ProfileSwitch::events_of(const std::string& profile) const {
  if (profile == active()) return events_.content();
  return could_be_a_file(profile) ? files_.read(parked_file(profile)) : std::nullopt;
}

bool ProfileSwitch::park() {
  recover();
  if (files_.exists(staged_)) return false;  // an earlier switch can neither go on nor back
  events_.remove_scratch();
  const auto parked = parked_file(active());
  if (!events_.exists()) return files_.remove(parked);
  return copy(events_.path(), parked);
}

Task<bool> ProfileSwitch::stage(std::string profile) {
  if (!could_be_a_file(profile)) co_return false;
  const bool stored = co_await store(kStagedFor, profile);
  if (!stored) co_return false;
  const bool left_stored = co_await store(kLeft, active());
  if (!left_stored) co_return false;
  co_return copy(parked_file(profile), staged_);
}

// Nothing is copied to a file that has the content already. A missing file is copied as an empty
// one.
bool ProfileSwitch::copy(const std::filesystem::path& from, const std::filesystem::path& to) {
  std::string content;
  if (files_.exists(from)) {
    auto read = files_.read_settled(from);
    if (!read) return false;
    content = std::move(*read);
  }
  return files_.read(to) == content || replace_file(files_, to, content);
}

Task<bool> ProfileSwitch::change() {
  const std::string old_profile = active();
  const std::string new_profile = settings_.read("data", kStagedFor, "");
  if (new_profile == old_profile) co_return files_.remove(staged_);
  bool decided = copy(parked_file(new_profile), staged_);
  if (decided) decided = co_await store(kActive, new_profile);
  if (decided && use_staged()) co_return true;
  const bool undone = co_await store(kActive, old_profile);
  if (undone) files_.remove(staged_);
  co_return false;
}

void ProfileSwitch::recover() {
  discard_unfinished(files_, staged_);
  discard_unfinished(files_, parked_file(active()));
  if (!files_.exists(staged_)) return;
  const std::string profile = active();
  if (profile != settings_.read("data", kStagedFor, "") ||
      profile == settings_.read("data", kLeft, "")) {
    if (settings_.is_on_disk()) files_.remove(staged_);
    return;
  }
  // Until the exchange it holds what the profile's own file holds, after it the list that went.
  const auto staged = files_.read(staged_);
  const auto parked = parked_file(profile);
  if (!staged) return;
  if (files_.exists(parked) ? files_.read(parked) == staged : staged->empty())
    use_staged();
  else
    keep_replaced();
}

bool ProfileSwitch::use_staged() {
  if (events_.exists()) {
    if (!take_place()) return false;
    keep_replaced();
    return true;
  }
  const auto content = files_.read(staged_);
  if (!content) return false;
  return content->empty() ? files_.remove(staged_) : files_.rename(staged_, events_.path());
}

// Lets the staged list and the event list change places.
bool ProfileSwitch::take_place() {
  const auto staged = files_.read(staged_);
  if (!staged) return false;
  Exchange exchange = Exchange::kChanged;
  for (int attempt = 0; attempt < 3 && exchange == Exchange::kChanged; ++attempt) {
    const auto events = files_.read_settled(events_.path());
    if (!events) return false;
    exchange = files_.exchange(staged_, events_.path(), *events);
  }
  if (exchange != Exchange::kCannot) return exchange == Exchange::kDone;
  const std::string left = settings_.read("data", kLeft, "");
  return (!could_be_a_file(left) || copy(events_.path(), parked_file(left))) &&
         files_.rename(staged_, events_.path());
}

// A profile without events has no list, and what was saved last belongs to the profile that was
// left. When it cannot be written it stays where it is for the next time.
void ProfileSwitch::keep_replaced() {
  if (files_.read(events_.path()) == "") files_.remove(events_.path());
  if (!files_.exists(staged_)) return;
  const std::string left = settings_.read("data", kLeft, "");
  if (!could_be_a_file(left) || copy(staged_, parked_file(left))) files_.remove(staged_);
}

Task<bool> ProfileSwitch::store(const char* key, std::string profile) {
  settings_.write("data", key, profile);
  const bool stored = co_await module1_.stored(RegistryRoot::kCurrentUser);
  co_return stored;
}

std::filesystem::path ProfileSwitch::parked_file(std::string_view profile) const {
  return folder_ / (std::string(profile) + ".txt");
}

}  // namespace homewarden
