#pragma once

#include <string>

#include "base/task.h"
#include "core/settings.h"
#include "platform/dialogs.h"
#include "platform/web_server_control.h"
#include "ui/settings_panels.h"

namespace homewarden {

// Who besides the house's own is let in, as it is stored and as the panel shows it: further host
// names, foreign origins, trusted proxies.
class AccessSettings {
 public:
  AccessSettings(WebPanel& panel, Settings& settings, Dialogs& dialogs, WebServerControl& web);

  // What is stored.
  WebAccess stored() const;
  // Shows what is stored.
  void show();
  // One line that names the entries that are stored and cannot be used; "" when all can be.
  std::string faults() const;

  // Stores what the panel shows. False, and a message, when an entry is none: nothing is stored.
  Task<bool> store();

 private:
  WebPanel& panel_;
  Settings& settings_;
  Dialogs& dialogs_;
  WebServerControl& web_;
};

}  // namespace homewarden
