#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "core/list_file.h"
#include "core/settings.h"
#include "platform/files.h"

namespace homewarden {

// The exchange of the event list with the parked list of another profile, `<name>.txt`, in steps
// that can be stopped or refused anywhere. The old list is copied, the new one is written beside it
// as `profile.tmp`; the stored name of the active profile decides, and one rename carries it out.
class ProfileSwitch {
 public:
  ProfileSwitch(Files& files, Settings& settings, ListFile& events, std::filesystem::path folder);

  // The active profile; "Standard" when none is stored or what is stored could be no file name.
  std::string active() const;

  // Each of the three steps answers false, with the active profile and its events as they were,
  // when it cannot be done.

  // Copies the event list to the file of the active profile, and removes that file when there is no
  // list. False as well while an earlier switch can neither be finished nor forgotten.
  bool park();
  // Writes the events of the profile beside the event list: none when it has no file. False as well
  // for a name that can be no file's: empty, with a slash, back-slash or colon, with a dot in
  // front, or that of a scratch file.
  bool stage(const std::string& profile);
  // Makes the profile that was staged the active one. Its events are then the event list, which
  // goes when it has none.
  bool change();

  // Finishes a switch that was decided, or forgets one that was not. Nothing happens when none was
  // begun. At the start this comes before HouseFiles::recover(): a profile may have no event list.
  void recover();

 private:
  bool store(const char* key, const std::string& profile);
  bool use_staged();
  std::filesystem::path parked_file(std::string_view profile) const;

  Files& files_;
  Settings& settings_;
  ListFile& events_;
  std::filesystem::path folder_;
  std::filesystem::path staged_;
};

}  // namespace homewarden
