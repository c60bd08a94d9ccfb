#pragma once

#include <filesystem>

#include "core/list_file.h"
#include "platform/files.h"

namespace homewarden {

// The data files of a house.
//
// Deleting a room or a device can change all three lists. The new lists are written first; one
// rename, of the new room list to `tcdone.tmp`, decides that the deletion happens; after it a stop
// can be made good by going on.
class HouseFiles {
 public:
  HouseFiles(Files& files, const std::filesystem::path& folder);

  ListFile rooms;   // rmlst.hwd, by way of tc.tmp
  ListFile events;  // evelst.hwd, by way of temp.txt
  ListFile macros;  // macs.hlk, by way of tempmac.txt

  // The lines that a deletion leaves out of each list. The lists of events and macros stay
  // untouched without a choice.
  struct Deletion {
    ListFile::Choice rooms;
    ListFile::Choice events;
    ListFile::Choice macros;
  };

  // Forgets a deletion, decided or not, and the scratch files of one that was being written.
  void discard_deletion();
  // Decides a deletion. False, with everything as it was, when a file cannot be read or written.
  bool decide_deletion(const Deletion& deletion);
  // Carry out what has been decided, and do nothing to a list that stays. The macro list comes
  // first and at once: it is added to without a lock. The room list ends the deletion. False when
  // the new list could not be put in the place of the old one.
  bool use_macros();
  bool use_events();
  bool use_rooms();
  // Takes a decision back that cannot be carried out: the lists that were not used stay as they
  // are.
  void give_up_deletion();

  // Puts right what a stop left behind: lists that exist only as scratch files are put back,
  // deletions that were decided are finished. A decision that cannot be carried out is taken back.
  void recover();

 private:
  // False when one of the files that would take a list's place is no file or cannot be read.
  bool deletion_is_readable();

  Files& files_;
  ListFile events_left_;  // evelst.hwd, by way of tcev.tmp
  ListFile macros_left_;  // macs.hlk, by way of tcmac.tmp
  std::filesystem::path decided_;
};

}  // namespace homewarden
