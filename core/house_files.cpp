#include "core/house_files.h"

namespace homewarden {

HouseFiles::HouseFiles(Files& files, const std::filesystem::path& folder)
    : rooms(files, folder / "rmlst.hwd", folder / "tc.tmp"),
      events(files, folder / "evelst.hwd", folder / "temp.txt"),
      macros(files, folder / "macs.hlk", folder / "tempmac.txt"),
      files_(files),
      events_left_(files, folder / "evelst.hwd", folder / "tcev.tmp"),
      macros_left_(files, folder / "macs.hlk", folder / "tcmac.tmp"),
      decided_(folder / "tcdone.tmp") {}

void HouseFiles::discard_deletion() {
  give_up_deletion();
  rooms.remove_scratch();
}

bool HouseFiles::decide_deletion(const Deletion& deletion) {
  const bool written = (!deletion.events || events_left_.write_scratch(deletion.events)) &&
                       (!deletion.macros || macros_left_.write_scratch(deletion.macros)) &&
                       rooms.write_scratch(deletion.rooms);
  if (written && files_.rename(rooms.scratch(), decided_)) return true;
  discard_deletion();
  return false;
}

bool HouseFiles::use_macros() {
  return !files_.exists(macros_left_.scratch()) || macros_left_.use_scratch();
}

bool HouseFiles::use_events() {
  return !files_.exists(events_left_.scratch()) || events_left_.use_scratch();
}

bool HouseFiles::use_rooms() {
  return files_.rename(decided_, rooms.path());
}

// The decision first: from there on the other lists are only scratch files.
void HouseFiles::give_up_deletion() {
  if (files_.exists(decided_)) files_.remove(decided_);
  events_left_.remove_scratch();
  macros_left_.remove_scratch();
}

// A pipe or a dangling link of such a name would take the place of a list.
bool HouseFiles::deletion_is_readable() {
  for (const auto& file : {macros_left_.scratch(), events_left_.scratch()})
    if (files_.exists(file) && !files_.read(file)) return false;
  return files_.read(decided_).has_value();
}

// A decision that cannot be carried out now is no decision: later it would undo what has been
// changed meanwhile.
void HouseFiles::recover() {
  if (files_.exists(decided_) &&
      !(deletion_is_readable() && use_macros() && use_events() && use_rooms()))
    give_up_deletion();
  for (ListFile* list : {&events_left_, &macros_left_, &rooms, &events, &macros}) list->recover();
}

}  // namespace homewarden
