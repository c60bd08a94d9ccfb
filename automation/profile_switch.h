#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "base/task.h"
#include "core/list_file.h"
#include "core/module1.h"
#include "core/settings.h"
#include "platform/files.h"

namespace homewarden {

// The exchange of the event list with the parked list of another profile, `<name>.txt`, in steps
// that can be stopped or refused anywhere. The old list is copied, the new one is written beside it
// as `profile.tmp`; the stored name of the active profile decides, and one exchange of the two
// files carries it out. What others saved into either list until then goes to the profile it was
// saved in.
class ProfileSwitch {
 public:
  ProfileSwitch(Files& files, Settings& settings, Module1& module1, ListFile& events,
                std::filesystem::path folder);

  // The active profile; "Standard" when none is stored or what is stored could be no file name.
  std::string active() const;

  // The lines of the events of a profile, of the active one as they are now. Nothing when it has
  // none, or when its file cannot be read.
  std::optional<std::string> events_of(const std::string& profile) const;

  // Each of the three steps answers false, with the active profile and its events as they were,
  // when it cannot be done. The last two go on when the disk has the setting that decides: a moment
  // later, as a rule.

  // Copies the event list to the file of the active profile, and removes that file when there is no
  // list. False as well while an earlier switch can neither be finished nor forgotten.
  bool park();
  // Writes the events of the profile beside the event list: none when it has no file. False as well
  // for a name that can be no file's: empty, with a slash, back-slash or colon, with a dot in
  // front, or that of a scratch file.
  Task<bool> stage(std::string profile);
  // Makes the profile that was staged the active one. Its events are then the event list, which
  // goes when it has none.
  Task<bool> change();

  // Finishes a switch that was decided, or forgets one that was not, once it is known what the disk
  // says of it. Nothing happens when none was begun. At the start this comes before
  // HouseFiles::recover(): a profile may have no event list.
  void recover();

 private:
  Task<bool> store(const char* key, std::string profile);
  bool use_staged();
  bool take_place();
  void keep_replaced();
  bool copy(const std::filesystem::path& from, const std::filesystem::path& to);
  std::filesystem::path parked_file(std::string_view profile) const;

  Files& files_;
  Settings& settings_;
  Module1& module1_;
  ListFile& events_;
  std::filesystem::path folder_;
  std::filesystem::path staged_;
};

}  // namespace homewarden
