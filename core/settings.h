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
  // A value that cannot be written is lost silently; the program goes on with what it has.
  void write(const std::string& section, const std::string& key, const std::string& text);
  void remove(const std::string& section, const std::string& key);

 private:
  Registry& registry_;
};

}  // namespace homewarden
