#include "automation/profile_switch.h"

#include <utility>

#include "base/lines.h"
#include "base/replace_file.h"

namespace homewarden {
namespace {

const char* const kDefaultProfile = "Standard";

bool could_be_a_file(std::string_view name) {
  return !name.empty() && name.find_first_of("/\\:") == std::string_view::npos &&
         name.front() != '.';
}

}  // namespace

ProfileSwitch::ProfileSwitch(Files& files, Settings& settings, ListFile& events,
                             std::filesystem::path folder)
    : files_(files),
      settings_(settings),
      events_(events),
      folder_(std::move(folder)),
      journal_(folder_ / "profile.tmp") {}

std::string ProfileSwitch::active() const {
  std::string name = settings_.read("data", "profile", kDefaultProfile);
  return could_be_a_file(name) ? name : kDefaultProfile;
}

bool ProfileSwitch::begin(const std::string& name) {
  if (!could_be_a_file(name)) return false;
  events_.remove_scratch();
  if (!write(State{false, events_.exists(), active(), name})) return false;
  settings_.write("data", "profile", name);
  if (active() == name) return true;
  files_.remove(journal_);
  return false;
}

bool ProfileSwitch::park() {
  auto state = read();
  if (!state) return false;
  // One rename: the events are never in both places or in none.
  const auto parked = parked_file(state->from);
  const bool moved = state->had_events ? !events_.exists() || files_.rename(events_.path(), parked)
                                       : files_.remove(parked);
  state->parked = true;
  if (moved && write(*state)) return true;
  give_up(*state);
  return false;
}

bool ProfileSwitch::bring_in() {
  const auto state = read();
  if (!state) return false;
  const auto parked = parked_file(state->to);
  bool done = true;
  if (files_.exists(parked)) {
    const auto content = files_.read(parked);
    done = content && replace_file(files_, events_.path(), *content);
  }
  if (!done) {
    give_up(*state);
    return false;
  }
  files_.remove(journal_);
  return true;
}

void ProfileSwitch::recover() {
  discard_unfinished(files_, journal_);
  const auto state = read();
  if (!state) {
    if (files_.exists(journal_)) files_.remove(journal_);  // cut off before anything was done
    return;
  }
  settings_.write("data", "profile", state->to);
  if (state->parked || park()) bring_in();
}

// Back to the profile that was active, with its events.
void ProfileSwitch::give_up(const State& state) {
  const auto parked = parked_file(state.from);
  if (state.had_events && !events_.exists()) {
    const auto content = files_.read(parked);
    if (content && !replace_file(files_, events_.path(), *content))
      files_.rename(parked, events_.path());
  }
  settings_.write("data", "profile", state.from);
  files_.remove(journal_);
}

bool ProfileSwitch::write(const State& state) {
  const std::string text = std::string(state.parked ? "parked" : "begun") + "\r\n" +
                           (state.had_events ? "events" : "none") + "\r\n" + state.from + "\r\n" +
                           state.to + "\r\n";
  return replace_file(files_, journal_, text);
}

std::optional<ProfileSwitch::State> ProfileSwitch::read() {
  const auto content = files_.read(journal_);
  if (!content) return std::nullopt;
  LineReader reader(*content);
  std::string_view lines[4];
  for (std::string_view& line : lines) {
    const auto next = reader.next();
    if (!next) return std::nullopt;
    line = *next;
  }
  State state{lines[0] == "parked", lines[1] == "events", std::string(lines[2]),
              std::string(lines[3])};
  if (!could_be_a_file(state.from) || !could_be_a_file(state.to)) return std::nullopt;
  return state;
}

std::filesystem::path ProfileSwitch::parked_file(std::string_view profile) const {
  return folder_ / (std::string(profile) + ".txt");
}

}  // namespace homewarden
