#pragma once

#include "platform/logon_entry.h"

namespace homewarden::os_linux {

// For a run that must not be started at logon.
class AbsentLogonEntry : public LogonEntry {
 public:
  bool is_available() const override { return false; }
  bool is_switched_off() override { return false; }
  bool fill() override { return true; }
  bool clear() override { return true; }
};

}  // namespace homewarden::os_linux
