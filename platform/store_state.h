#pragma once

#include <cstdint>
#include <string>

namespace homewarden {

// Why what is kept cannot be read or written for the time being.
enum class StoreTrouble {
  kNone,
  kReadOnly,   // the disk takes no changes
  kForbidden,  // the permissions of the file or its folder
  kNoSpace,
  kLocked,   // another program has held it for longer than a second
  kDamaged,  // and could not be set aside
  kSlow,     // the disk has not answered for two seconds
  kFailing,  // whatever else the disk reports
};

// How the values of one root stand with the disk.
struct StoreState {
  // False as long as nobody knows what the disk holds: then only what was recorded since the start
  // is answered. A store that does not exist yet is known, and empty.
  bool is_read = true;
  StoreTrouble trouble = StoreTrouble::kNone;
  // The changes of this process are numbered: so many were recorded, and those up to `on_disk`
  // survive a kill and a power cut. What lies between is in memory alone.
  std::uint64_t recorded = 0;
  std::uint64_t on_disk = 0;

  std::string file;  // where it is kept; "" when it is kept nowhere
  // Where a damaged store was put in this run, "" when none was; a new one was begun then.
  std::string set_aside;
  // Whether the new one was given everything that had been read before the damage was met.
  bool restored = false;

  // Whether what is read is what a power cut would leave.
  bool is_on_disk() const { return is_read && on_disk == recorded; }
};

}  // namespace homewarden
