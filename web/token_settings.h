#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/operations.h"
#include "base/task.h"
#include "core/notices.h"
#include "core/settings.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/registry.h"
#include "platform/web_server_control.h"
#include "ui/settings_panels.h"
#include "ui/shared_state.h"
#include "web/token_store.h"

namespace homewarden {

// The tokens of programs: made and revoked on the panel, told to the web server as they are stored,
// also when another program has stored them. What is damaged lets nobody in and is told among the
// notices until it is revoked.
class TokenSettings {
 public:
  TokenSettings(WebPanel& panel, ProgramTimers& timers, Operations& operations, const Clock& clock,
                Settings& settings, Registry& registry, Dialogs& dialogs, Notices& notices,
                WebServerControl& web);

 private:
  void look();
  void take_up();
  void show();
  void forget_new();
  void note_use(const std::string& token);
  Task<void> make();
  Task<void> revoke(int place);

  WebPanel& panel_;
  const Clock& clock_;
  Settings& settings_;
  Registry& registry_;
  Dialogs& dialogs_;
  Notices& notices_;
  WebServerControl& web_;
  TokenStore store_;
  std::vector<TokenStore::Entry> entries_;  // as they were taken up last
  std::optional<std::vector<ApiToken>> told_;
  std::optional<std::uint64_t> seen_;  // the changes of the settings that were
  int new_one_ = 0;                    // the place of the token that is shown; 0 for none
};

}  // namespace homewarden
