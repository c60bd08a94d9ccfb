#include "core/house/deletion_undo.h"

#include <algorithm>
#include <utility>

#include "base/lines.h"
#include "base/text.h"
#include "core/device_ids.h"
#include "core/house/house_input.h"
#include "core/lists/file_lock.h"

namespace homewarden {
namespace {

const char* const kNotWritten =
    "the files of the house could not be read or written. Please check the disk, the permissions "
    "of rmlst.hwd, evelst.hwd, macs.hlk and the profiles, and that no other program has them open.";

std::vector<std::string> lines_of(std::string_view content) {
  std::vector<std::string> lines;
  LineReader reader(content);
  while (const auto line = reader.next()) lines.emplace_back(*line);
  return lines;
}

// Why it cannot come back into this house, in words for a person; "" when it can. What stood beside
// it before may do so again, whatever it is called: only what came since can be in its way.
std::string conflict(const DeletedItem& deleted, const std::vector<std::string>& lines,
                     Settings& settings) {
  std::vector<std::string> came_since;
  for (const std::string& line : lines)
    if (!deleted.beside.contains(line)) came_since.push_back(line);
  HouseIndex house(settings);
  house.set_lines(came_since);
  const std::string& room = deleted.item.room;
  for (const std::string& other : house.rooms())
    if (other != room && equals_ignoring_case(other, room)) return room_conflict(room, house);
  came_since.push_back(room + "~~~");
  house.set_lines(came_since);
  for (const LineInPlace& one : deleted.rooms) {
    const auto entry = parse_list_line(one.line);
    const bool is_there = std::find(lines.begin(), lines.end(), one.line) != lines.end();
    if (is_there || !entry || !entry->device || !house.by_key(entry->device->key())) continue;
    const std::string problem = device_conflict(*entry->device, house);
    if (!problem.empty()) return problem;
  }
  return "";
}

}  // namespace

DeletionUndo::DeletionUndo(NavigationPane& pane, Flags& flags, StatusBar& status,
                           Operations& operations, Module1& module1, Settings& settings,
                           HouseFiles& files, HouseIndex& house, RoomList& rooms, EventList& events,
                           ProfileSwitch& profiles, DeviceState& state, NavigationTree& tree,
                           Messages& messages)
    : pane_(pane),
      flags_(flags),
      status_(status),
      operations_(operations),
      module1_(module1),
      settings_(settings),
      files_(files),
      house_(house),
      rooms_(rooms),
      events_(events),
      profiles_(profiles),
      state_(state),
      tree_(tree),
      messages_(messages) {}

void DeletionUndo::remember(DeletedItem& deleted) {
  deleted.profile = profiles_.active();
  for (const LineInPlace& one : deleted.rooms) {
    const auto entry = parse_list_line(one.line);
    if (!entry || !entry->device) continue;
    const std::string key = entry->device->key();
    deleted.stored.push_back({*entry->device, settings_.read("type", key, ""),
                              DeviceIds::recorded(settings_, key), state_.record_of(key)});
  }
}

void DeletionUndo::offer(DeletedItem deleted) {
  std::string text = "Deleted: " + deleted.item.name();
  messages_.tell(std::move(text),
                 [this, deleted = std::move(deleted)] { operations_.start(put_back(deleted)); });
}

Task<void> DeletionUndo::put_back(DeletedItem deleted) {
  const std::string name = deleted.item.name();
  const std::string problem = co_await carry_out(deleted);
  if (problem.empty()) {
    std::string text = name + " is back." + shared_addresses(deleted);
    status_.panel2 = text;
    messages_.tell(std::move(text));
    co_return;
  }
  messages_.fail(name + " is not back: " + problem,
                 [this, deleted = std::move(deleted)] { operations_.start(put_back(deleted)); });
}

Task<std::string> DeletionUndo::carry_out(const DeletedItem& deleted) {
  const EventList::Closed closed(events_);
  FileLock lock = co_await lock_files(flags_, module1_);
  const auto content = files_.rooms.exists() ? files_.rooms.content() : std::string();
  if (!content) co_return kNotWritten;
  std::string problem = co_await rewrite(deleted, *content);
  lock.release();
  if (!problem.empty()) co_return problem;
  co_await rooms_.loadlists();
  rooms_.cleartree(pane_.Tree);
  tree_.loadtree();
  co_await events_.loadevents();
  co_return problem;
}

// What is stored of the devices is on the disk before they are in the list.
Task<std::string> DeletionUndo::rewrite(const DeletedItem& deleted, const std::string& room_list) {
  const auto lines = lines_of(room_list);
  std::string problem = conflict(deleted, lines, settings_);
  if (!problem.empty()) co_return problem;
  HouseIndex there(settings_);
  there.set_lines(lines);
  store(deleted, there);
  co_await module1_.stored(RegistryRoot::kCurrentUser);
  co_await module1_.stored(RegistryRoot::kLocalMachine);
  if (add_lines(deleted)) co_return "";
  forget(deleted, there);
  co_return kNotWritten;
}

// What a device of the house has by now stays.
void DeletionUndo::store(const DeletedItem& deleted, const HouseIndex& there) {
  for (const auto& [device, type, id, state] : deleted.stored) {
    if (there.by_key(device.key())) continue;
    if (!type.empty()) settings_.write("type", device.key(), type);
    DeviceIds::record(settings_, device.key(), id);
    state_.put_back(device.key(), state);
  }
}

void DeletionUndo::forget(const DeletedItem& deleted, const HouseIndex& there) {
  for (const DeletedItem::Stored& one : deleted.stored) {
    const Device& device = one.device;
    if (there.by_key(device.key())) continue;
    settings_.remove("type", device.key());
    DeviceIds::forget(settings_, device.key());
    state_.forget(device.key());
  }
}

// The room list last: with it the device is back.
bool DeletionUndo::add_lines(const DeletedItem& deleted) {
  const bool is_active = deleted.profile == profiles_.active();
  const std::string event_list = is_active ? "evelst.hwd" : deleted.profile + ".txt";
  return files_.changes.carry_out({{"macs.hlk", nullptr, deleted.macros},
                                   {event_list, nullptr, deleted.events},
                                   {"rmlst.hwd", nullptr, deleted.rooms}});
}

// Two lamps may share an address on purpose; whoever does not know should.
std::string DeletionUndo::shared_addresses(const DeletedItem& deleted) const {
  for (const auto& stored : deleted.stored) {
    for (const Device& other : house_.devices()) {
      const bool shares = other.unit == stored.device.unit &&
                          equals_ignoring_case(other.house_code, stored.device.house_code) &&
                          other.key() != stored.device.key();
      const bool came_too =
          std::any_of(deleted.stored.begin(), deleted.stored.end(),
                      [&other](const DeletedItem::Stored& one) { return one.device == other; });
      if (shares && !came_too)
        return " " + other.room + ", " + other.name + " has the address of " + stored.device.name +
               ": both are switched together.";
    }
  }
  return "";
}

}  // namespace homewarden
