#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/linux/posix_files.h"
#include "platform/logon_entry.h"

namespace homewarden::os_linux {

// $XDG_CONFIG_HOME/autostart or ~/.config/autostart, whose entries a desktop starts when the person
// logs on (Desktop Application Autostart Specification).
std::filesystem::path autostart_folder();

// homewarden.desktop in the folder of autostart entries. Cleared it has no byte left, and does not
// go: an entry of the same name that is installed for all must not come to light.
class AutostartEntry : public LogonEntry {
 public:
  // What is to be started, with its arguments and what its environment has to hold, NAME=value.
  AutostartEntry(const std::filesystem::path& folder, const std::filesystem::path& program,
                 const std::vector<std::string>& arguments,
                 const std::vector<std::string>& environment);

  bool is_available() const override { return true; }
  // As desktops mark an entry that their own settings leave out.
  bool is_switched_off() override;
  bool fill() override;
  bool clear() override;

 private:
  bool put(const std::string& content);

  PosixFiles files_;
  std::filesystem::path file_;
  std::string content_;
};

}  // namespace homewarden::os_linux
