#include "core/house_files.h"

namespace homewarden {

HouseFiles::HouseFiles(Files& files, const std::filesystem::path& folder)
    : rooms(files, folder / "rmlst.hwd", folder / "tc.tmp"),
      events(files, folder / "evelst.hwd", folder / "temp.txt"),
      macros(files, folder / "macs.hlk", folder / "tempmac.txt"),
      files_(files),
      events_of_device_(files, folder / "evelst.hwd", folder / "tcev.tmp"),
      decided_(folder / "tcdone.tmp") {}

void HouseFiles::discard_deletion() {
  give_up_deletion();
  rooms.remove_scratch();
}

bool HouseFiles::decide_deletion(const ListFile::Choice& rooms_left_out,
                                 const ListFile::Choice& events_left_out) {
  const bool written = (!events_left_out || events_of_device_.write_scratch(events_left_out)) &&
                       rooms.write_scratch(rooms_left_out);
  if (written && files_.rename(rooms.scratch(), decided_)) return true;
  discard_deletion();
  return false;
}

bool HouseFiles::use_events() {
  return events_of_device_.use_scratch();
}

bool HouseFiles::use_rooms() {
  return files_.rename(decided_, rooms.path());
}

// The decision first: from there on the events are only a scratch file.
void HouseFiles::give_up_deletion() {
  if (files_.exists(decided_)) files_.remove(decided_);
  events_of_device_.remove_scratch();
}

// A decision that cannot be carried out now is no decision: later it would undo what has been
// changed meanwhile.
void HouseFiles::recover() {
  if (files_.exists(decided_)) {
    const bool has_events = files_.exists(events_of_device_.scratch());
    const bool done = (!has_events || use_events()) && use_rooms();
    if (!done) give_up_deletion();
  }
  events_of_device_.recover();
  for (ListFile* list : {&rooms, &events, &macros}) list->recover();
}

}  // namespace homewarden
