#pragma once

#include <string>

#include "core/notices.h"
#include "platform/registry.h"
#include "ui/controls.h"
#include "ui/shared_state.h"

namespace homewarden {

// Tells the person what is wrong with the settings for as long as it is: that they were damaged,
// cannot be read, cannot be written; and, in panel 2, that all is well again. Damage stays told
// until the next start.
class StoreNotices {
 public:
  StoreNotices(Registry& registry, Notices& notices, StatusBar& status, ProgramTimers& timers);

  // At the start, when what shows notices is there. The signal of the registry and a timer do the
  // rest.
  void look();

 private:
  struct Told {
    bool unread = false;
    bool unwritten = false;
  };

  void look(RegistryRoot root);

  Registry& registry_;
  Notices& notices_;
  StatusBar& status_;
  Told machine_;
  Told user_;
};

}  // namespace homewarden
