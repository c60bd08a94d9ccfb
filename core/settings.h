#pragma once

#include <string>
#include <string_view>

#include "platform/registry.h"

namespace homewarden {

// Where the machine-wide values of the program lie: seen by the window and by the service.
inline const std::string kMachineKey = "Software\\Microsoft\\Windows\\Homewarden";
// "Homewardendelay" lies here.
inline const std::string kDelayKey = "Software\\Microsoft\\Windows\\CurrentVersion";

// Whether the program keeps a value of its own under this name beside the states of the devices,
// which lie under their keys. Letter case is ignored.
bool is_program_value(std::string_view name);

// The per-user values: application Homewarden, a section, a key, a text.
class Settings {
 public:
  explicit Settings(Registry& registry) : registry_(registry) {}

  // The default when the value is missing, unreadable or no string.
  std::string read(const std::string& section, const std::string& key,
                   const std::string& default_text) const;
  // Recorded at once and on the disk a little later (platform/registry.h); Module1::stored() waits
  // for it.
  void write(const std::string& section, const std::string& key, const std::string& text);
  void remove(const std::string& section, const std::string& key);
  // False as long as nothing is answered but defaults, since the disk cannot be read.
  bool are_known() const { return registry_.state(RegistryRoot::kCurrentUser).is_read; }
  // Whether what is read is what a power cut would leave.
  bool is_on_disk() const { return registry_.state(RegistryRoot::kCurrentUser).is_on_disk(); }

 private:
  Registry& registry_;
};

}  // namespace homewarden
