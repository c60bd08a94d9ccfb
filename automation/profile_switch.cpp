#include "automation/profile_switch.h"

#include <utility>

#include "base/text.h"
#include "core/replace_file.h"

namespace homewarden {
namespace {

const char* const kActive = "profile";
const char* const kStagedFor = "profileswitch";  // the profile that `profile.tmp` belongs to
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

bool ProfileSwitch::park() {
  recover();
  if (files_.exists(staged_)) return false;  // an earlier switch can neither go on nor back
  events_.remove_scratch();
  const auto parked = parked_file(active());
  if (!events_.exists()) return files_.remove(parked);
  const auto content = files_.read(events_.path());
  return content && replace_file(files_, parked, *content);
}

Task<bool> ProfileSwitch::stage(std::string profile) {
  if (!could_be_a_file(profile)) co_return false;
  const bool stored = co_await store(kStagedFor, profile);
  if (!stored) co_return false;
  const auto parked = parked_file(profile);
  if (!files_.exists(parked)) co_return replace_file(files_, staged_, "");
  const auto content = files_.read(parked);
  co_return content&& replace_file(files_, staged_, *content);
}

Task<bool> ProfileSwitch::change() {
  const std::string old_profile = active();
  const std::string new_profile = settings_.read("data", kStagedFor, "");
  const bool decided = co_await store(kActive, new_profile);
  if (decided && use_staged()) co_return true;
  const bool undone = co_await store(kActive, old_profile);
  if (undone) files_.remove(staged_);
  co_return false;
}

void ProfileSwitch::recover() {
  discard_unfinished(files_, staged_);
  discard_unfinished(files_, parked_file(active()));
  if (!files_.exists(staged_)) return;
  if (active() == settings_.read("data", kStagedFor, ""))
    use_staged();
  else if (settings_.is_on_disk())
    files_.remove(staged_);
}

// A profile without events has no list.
bool ProfileSwitch::use_staged() {
  const auto content = files_.read(staged_);
  if (!content || !files_.rename(staged_, events_.path())) return false;
  if (content->empty()) files_.remove(events_.path());
  return true;
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
