#include "core/house_files.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

#include "base/lines.h"
#include "core/lines_of_key.h"
#include "core/replace_file.h"

namespace homewarden {

HouseFiles::HouseFiles(Files& files, const std::filesystem::path& folder)
    : rooms(files, folder / "rmlst.hwd", folder / "tc.tmp"),
      events(files, folder / "evelst.hwd", folder / "temp.txt"),
      macros(files, folder / "macs.hlk", folder / "tempmac.txt"),
      changes(files, folder),
      files_(files),
      events_left_(files, folder / "evelst.hwd", folder / "tcev.tmp"),
      macros_left_(files, folder / "macs.hlk", folder / "tcmac.tmp"),
      decided_(folder / "tcdone.tmp") {}

// In the order in which they are changed.
std::array<HouseFiles::Part, 3> HouseFiles::parts() {
  return {{{"macs.hlk: ", macros_left_}, {"evelst.hwd: ", events_left_}, {"rmlst.hwd: ", rooms}}};
}

bool HouseFiles::decide_deletion(const Deletion& deletion) {
  const bool written = (!deletion.events || events_left_.write_scratch(deletion.events)) &&
                       (!deletion.macros || macros_left_.write_scratch(deletion.macros)) &&
                       rooms.write_scratch(deletion.rooms);
  if (written && note(deletion)) return true;
  give_up_deletion();
  return false;
}

// Writes down the lines that go, each behind the name of its list: this is the decision.
bool HouseFiles::note(const Deletion& deletion) {
  const ListFile::Choice* const choices[] = {&deletion.macros, &deletion.events, &deletion.rooms};
  std::string notes;
  for (std::size_t i = 0; i < parts().size(); ++i) {
    if (!*choices[i]) continue;
    const auto content = parts()[i].list.content();
    if (!content) return false;
    const std::string chosen = chosen_lines(*content, *choices[i]);
    LineReader reader(chosen);
    while (const auto line = reader.next())
      notes.append(parts()[i].name).append(*line).append("\r\n");
  }
  return replace_file(files_, decided_, notes);
}

bool HouseFiles::use_macros() {
  return !files_.exists(macros_left_.scratch()) || macros_left_.use_scratch();
}

bool HouseFiles::use_events() {
  return !files_.exists(events_left_.scratch()) || events_left_.use_scratch();
}

bool HouseFiles::use_rooms() {
  if (!rooms.use_scratch()) return false;
  forget_decision();
  return true;
}

// Carried out later, it would take away what was added anew meanwhile.
void HouseFiles::forget_decision() {
  if (files_.exists(decided_) && !files_.remove(decided_)) files_.write(decided_, "");
}

// The decision first: from there on the new lists are only scratch files.
void HouseFiles::give_up_deletion() {
  forget_decision();
  for (const Part& part : parts()) part.list.remove_scratch();
}

// Takes the lines that were written down out of the lists. Nothing happens to any list when the
// file holds something else: it is not this program's.
bool HouseFiles::finish_deletion() {
  const auto notes = files_.read(decided_);
  if (!notes) return false;
  std::array<std::set<std::string, std::less<>>, 3> going;
  LineReader reader(*notes);
  while (const auto line = reader.next()) {
    const auto all = parts();
    const auto part = std::find_if(all.begin(), all.end(), [&line](const Part& candidate) {
      return line->starts_with(candidate.name);
    });
    if (part == all.end()) return false;
    going[static_cast<std::size_t>(part - all.begin())].emplace(
        line->substr(std::string_view(part->name).size()));
  }
  for (std::size_t i = 0; i < going.size(); ++i) {
    ListFile& list = parts()[i].list;
    const auto goes = [&lines = going[i]](std::string_view line) { return lines.contains(line); };
    if (going[i].empty() || !list.exists()) continue;
    if (!list.write_scratch(goes) || !list.use_scratch()) return false;
  }
  return true;
}

// A decision that cannot be carried out now is no decision: later it would undo what has been
// changed meanwhile.
void HouseFiles::recover() {
  discard_unfinished(files_, decided_);
  for (ListFile* list : {&events_left_, &macros_left_, &rooms, &events, &macros}) list->recover();
  changes.recover();
  if (!files_.exists(decided_)) return;
  finish_deletion();
  give_up_deletion();
}

}  // namespace homewarden
