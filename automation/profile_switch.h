#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "core/list_file.h"
#include "core/settings.h"
#include "platform/files.h"

namespace homewarden {

// The exchange of the event list with the parked list of another profile, `<name>.txt`, in steps
// that can be stopped anywhere. The file `profile.tmp` says how far it has come: `recover` goes on
// from there.
class ProfileSwitch {
 public:
  ProfileSwitch(Files& files, Settings& settings, ListFile& events, std::filesystem::path folder);

  // The active profile; "Standard" when none is stored or what is stored could be no file name.
  std::string active() const;

  // Makes `name` the active profile. False, with nothing changed, when that cannot be written down.
  bool begin(const std::string& name);
  // Parks the event list under the old profile's name.
  bool park();
  // Brings the new profile's events in. False when they cannot be: the old ones are back then.
  bool bring_in();

  // Finishes a switch that was stopped.
  void recover();

 private:
  struct State {
    bool parked = false;
    bool had_events = false;
    std::string from;
    std::string to;
  };

  bool write(const State& state);
  std::optional<State> read();
  std::filesystem::path parked_file(std::string_view profile) const;
  void give_up(const State& state);

  Files& files_;
  Settings& settings_;
  ListFile& events_;
  std::filesystem::path folder_;
  std::filesystem::path journal_;
};

}  // namespace homewarden
