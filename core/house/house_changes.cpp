#include "core/house/house_changes.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/text.h"
#include "core/device_ids.h"
#include "core/house/house_input.h"
#include "core/house/noted_type.h"
#include "core/lists/file_lock.h"

namespace homewarden {
namespace {

const char* const kNotThere = "It is not in the room and device list any more.";
const char* const kNotWritten =
    "The files of the house could not be read or written, so nothing was changed. Please check the "
    "disk, the permissions of rmlst.hwd, evelst.hwd, macs.hlk and the profiles, and that no other "
    "program has them open.";

// Names of values are found without regard to letter case.
bool has_new_key(const Renaming::Step& step) {
  return !equals_ignoring_case(step.from.key(), step.to.key());
}

std::string name_of(const Device& device) {
  return device.room + ", " + device.name;
}

}  // namespace

HouseChanges::HouseChanges(NavigationPane& pane, Flags& flags, StatusBar& status,
                           Messages& messages, Module1& module1, Settings& settings,
                           HouseFiles& files, HouseIndex& house, RoomList& rooms, EventList& events,
                           OnceEvents& once_events, DeviceState& state, Presses& presses,
                           DevicePanel& devices, NavigationTree& tree)
    : pane_(pane),
      flags_(flags),
      status_(status),
      messages_(messages),
      module1_(module1),
      settings_(settings),
      files_(files),
      house_(house),
      rooms_(rooms),
      events_(events),
      once_events_(once_events),
      state_(state),
      presses_(presses),
      devices_(devices),
      tree_(tree) {
  house.changed.connect([this] {
    state_.stop_following([this](const std::string& key) { return house_.by_key(key); });
  });
}

Task<std::string> HouseChanges::change_device(Device from, Device to, std::string type) {
  std::function<Renaming(std::string_view)> make = [&from, &to](std::string_view room_list) {
    return Renaming::of_device(from, to, room_list);
  };
  std::string problem = co_await carry_out(std::move(make), std::move(type));
  if (!problem.empty()) co_return problem;
  if (to.room == from.room && to.name == from.name)
    say(name_of(to) + " was changed");
  else
    say(name_of(from) + " is now " + name_of(to));
  co_return problem;
}

Task<std::string> HouseChanges::rename_room(std::string from, std::string to) {
  std::function<Renaming(std::string_view)> make = [&from, &to](std::string_view room_list) {
    return Renaming::of_room(from, to, room_list);
  };
  std::string own_types;
  std::string problem = co_await carry_out(std::move(make), std::move(own_types));
  if (problem.empty()) say(from + " is now " + to);
  co_return problem;
}

void HouseChanges::say(std::string text) {
  status_.panel2 = text;
  messages_.note(std::move(text));
}

Task<std::string> HouseChanges::carry_out(std::function<Renaming(std::string_view)> make,
                                          std::string type) {
  const EventList::Closed closed(events_);
  FileLock lock = co_await lock_files(flags_, module1_);
  const auto content = files_.rooms.content();
  if (!content) co_return kNotWritten;
  const Renaming renaming = make(*content);
  std::string problem = co_await rewrite(renaming, std::move(type));
  lock.release();
  if (problem.empty()) co_await show(renaming);
  co_return problem;
}

// What is recorded of the new names is on the disk before they are in a list.
Task<std::string> HouseChanges::rewrite(const Renaming& renaming, std::string type) {
  if (renaming.lines() == 0) co_return kNotThere;
  std::string problem = conflict(renaming);
  if (!problem.empty()) co_return problem;
  record_new(renaming, type, false);
  co_await module1_.stored(RegistryRoot::kCurrentUser);
  co_await module1_.stored(RegistryRoot::kLocalMachine);
  const bool done = change_lists(renaming);
  if (done) record_new(renaming, type, true);  // a command may have got through meanwhile
  forget_noted_type(settings_);
  forget(renaming, done);
  if (!done) co_return why_not();
  const ListFile::Edit edit = [&renaming](std::string_view key) { return renaming.event(key); };
  once_events_.edit(edit);
  events_.renamed(edit);
  co_return "";
}

std::string HouseChanges::conflict(const Renaming& renaming) {
  std::vector<std::string> lines = renaming.others();
  HouseIndex house(settings_);
  house.set_lines(lines);
  if (!renaming.new_room().empty()) {
    const std::string problem = room_conflict(renaming.new_room(), house);
    if (!problem.empty()) return problem;
    lines.push_back(renaming.new_room() + "~~~");
  } else {
    lines.push_back(renaming.old_room() + "~~~");  // which may have had no other line
  }
  house.set_lines(lines);
  for (const Renaming::Step& step : renaming.steps()) {
    if (step.from.room == step.to.room && step.from.name == step.to.name) continue;
    const std::string problem = device_conflict(step.to, house);
    if (!problem.empty()) return problem;
  }
  return "";
}

// Any list may be in the way, also one of a profile that nobody uses: a person must know which.
std::string HouseChanges::why_not() {
  auto lists = files_.changes.names_ending(".txt").value_or(std::vector<std::string>());
  lists.insert(lists.end(), {"macs.hlk", "profile.tmp", "evelst.hwd", "rmlst.hwd"});
  const std::string list = files_.changes.unreadable(lists);
  if (list.empty()) return kNotWritten;
  return list +
         " cannot be read, so nothing was changed: it may name the device. Please check its "
         "permissions, or take it out of the folder.";
}

bool HouseChanges::change_lists(const Renaming& renaming) {
  const auto names = files_.changes.names_ending(".txt");
  if (!names) return false;
  const auto event = [&renaming](std::string_view line) { return renaming.event(line); };
  std::vector<ListChanges::Change> changes;
  changes.push_back(
      {"macs.hlk", [&renaming](std::string_view line) { return renaming.macro(line); }});
  for (const std::string& profile : *names) changes.push_back({profile, event});
  changes.push_back({"profile.tmp", event});  // of a change of profile that could not be finished
  changes.push_back({"evelst.hwd", event});
  changes.push_back(
      {"rmlst.hwd", [&renaming](std::string_view line) { return renaming.room_line(line); }});
  return files_.changes.carry_out(changes);
}

// Of devices that keep their key only what goes with the new lists; a type is noted until then.
void HouseChanges::record_new(const Renaming& renaming, const std::string& type, bool decided) {
  for (const Renaming::Step& step : renaming.steps()) {
    if (!decided && !has_new_key(step)) {
      if (!type.empty()) note_type(settings_, step.to, type);
      continue;
    }
    const std::string old_type = settings_.read("type", step.from.key(), "");
    const std::string& new_type = type.empty() ? old_type : type;
    if (has_new_key(step)) {
      state_.copy(step.from.key(), step.to.key());
      DeviceIds::record(settings_, step.to.key(), DeviceIds::recorded(settings_, step.from.key()));
    }
    if (new_type.empty())
      settings_.remove("type", step.to.key());
    else
      settings_.write("type", step.to.key(), new_type);
  }
}

// What another device of the house has too stays.
void HouseChanges::forget(const Renaming& renaming, bool old_ones) {
  HouseIndex others(settings_);
  others.set_lines(renaming.others());
  for (const Renaming::Step& step : renaming.steps()) {
    if (!has_new_key(step)) continue;
    const std::string key = old_ones ? step.from.key() : step.to.key();
    if (others.by_key(key)) continue;
    settings_.remove("type", key);
    DeviceIds::forget(settings_, key);
    state_.forget(key);
    if (old_ones) state_.follow(key, step.to.key());
  }
}

Task<void> HouseChanges::show(const Renaming& renaming) {
  co_await rooms_.loadlists();
  for (const Renaming::Step& step : renaming.steps()) {
    presses_.follow(step.from, step.to);
    tree_.follow(step.from, step.to);
  }
  if (!renaming.new_room().empty()) {
    tree_.follow_room(renaming.old_room(), renaming.new_room());
    devices_.follow_room(renaming.old_room(), renaming.new_room());
  }
  rooms_.cleartree(pane_.Tree);
  tree_.loadtree();
  co_await events_.loadevents();
}

}  // namespace homewarden
