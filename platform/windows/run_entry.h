#pragma once

#include <string>

#include "platform/logon_entry.h"
#include "platform/registry.h"

namespace homewarden::windows {

// The value "Homewarden" among those that Windows runs when somebody logs on.
class RunEntry : public LogonEntry {
 public:
  // The folder of homewarden.exe, without a backslash at the end.
  RunEntry(Registry& registry, std::string application_folder);

  bool is_available() const override { return true; }
  bool is_switched_off() override { return false; }
  // Both are recorded at once; whether they come to stand on the disk is the registry's to tell.
  bool fill() override;
  bool clear() override;

 private:
  Registry& registry_;
  std::string application_folder_;
};

}  // namespace homewarden::windows
