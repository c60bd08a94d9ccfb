#pragma once

#include <filesystem>

#include "core/list_file.h"
#include "platform/files.h"

namespace homewarden {

// The data files of a house.
//
// Deleting a device can change two of them. Both new lists are written first; one rename, of the
// new room list to `tcdone.tmp`, decides that the deletion happens; after it a stop can be made
// good by going on.
class HouseFiles {
 public:
  HouseFiles(Files& files, const std::filesystem::path& folder);

  ListFile rooms;   // rmlst.hwd, by way of tc.tmp
  ListFile events;  // evelst.hwd, by way of temp.txt
  ListFile macros;  // macs.hlk, by way of tempmac.txt

  void discard_deletion();
  // Decides a deletion; of events only when `events_left_out` is given. False, with everything as
  // it was, when a file cannot be read or written.
  bool decide_deletion(const ListFile::Choice& rooms_left_out,
                       const ListFile::Choice& events_left_out);
  // What has been decided. The second one ends the deletion.
  bool use_events();
  bool use_rooms();
  // Takes a decision back that cannot be carried out: the lists stay as they are.
  void give_up_deletion();

  // Puts right what a stop left behind: lists that exist only as scratch files are put back,
  // deletions that were decided are finished.
  void recover();

 private:
  Files& files_;
  ListFile events_of_device_;  // evelst.hwd, by way of tcev.tmp
  std::filesystem::path decided_;
};

}  // namespace homewarden
