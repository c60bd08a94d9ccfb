#pragma once

#include <array>
#include <filesystem>

#include "core/list_changes.h"
#include "core/list_file.h"
#include "platform/files.h"

namespace homewarden {

// The data files of a house.
//
// Deleting a room or a device can change all three lists. The new lists are written first; one
// rename, of the lines that go to `tcdone.tmp`, decides that the deletion happens; after it a stop
// can be made good by taking these lines out of the lists as they are then.
class HouseFiles {
 public:
  HouseFiles(Files& files, const std::filesystem::path& folder);

  ListFile rooms;   // rmlst.hwd, by way of tc.tmp
  ListFile events;  // evelst.hwd, by way of temp.txt
  ListFile macros;  // macs.hlk, by way of tempmac.txt

  // Renaming can change these and the lists of all profiles.
  ListChanges changes;

  // The lines that a deletion leaves out of each list. The lists of events and macros stay
  // untouched without a choice.
  struct Deletion {
    ListFile::Choice rooms;
    ListFile::Choice events;
    ListFile::Choice macros;
  };

  // Decides a deletion; the choices must be good until it has ended. False, with everything as it
  // was, when a file cannot be read or written.
  bool decide_deletion(const Deletion& deletion);
  // Carry out what has been decided, and do nothing to a list that stays. The macro list comes
  // first and at once: it is added to without a lock. The room list ends the deletion. False when
  // the new list could not be put in the place of the old one.
  bool use_macros();
  bool use_events();
  bool use_rooms();
  // Forgets a deletion, decided or not: the lists that were not changed yet stay as they are.
  void give_up_deletion();

  // Puts right what a stop left behind: lists that exist only as scratch files are put back,
  // deletions that were decided are finished. A decision that cannot be carried out is taken back.
  void recover();

 private:
  // Each list that a deletion changes, with the name under which its lines are noted.
  struct Part {
    const char* name;
    ListFile& list;
  };
  std::array<Part, 3> parts();
  bool note(const Deletion& deletion);
  bool finish_deletion();
  void forget_decision();

  Files& files_;
  ListFile events_left_;  // evelst.hwd, by way of tcev.tmp
  ListFile macros_left_;  // macs.hlk, by way of tcmac.tmp
  std::filesystem::path decided_;
};

}  // namespace homewarden
