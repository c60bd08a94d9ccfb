#pragma once

#include <cstdint>

#include "platform/registry.h"
#include "ui/shared_state.h"
#include "x10/device_state.h"

namespace homewarden {

// Has it told what another process has recorded, about a second later at most.
class StateWatch {
 public:
  StateWatch(ProgramTimers& timers, Registry& registry, DeviceState& state)
      : registry_(registry), state_(state) {
    timers.statetimer.tick.connect([this] { look(); });
    registry.changed.connect([this](RegistryRoot) { look(); });
  }

 private:
  void look() {
    registry_.changes(RegistryRoot::kCurrentUser);  // has them found; nothing here shows them
    const std::uint64_t changes = registry_.changes(RegistryRoot::kLocalMachine);
    if (changes == seen_) return;
    seen_ = changes;
    state_.changed_elsewhere();
  }

  Registry& registry_;
  DeviceState& state_;
  std::uint64_t seen_ = 0;
};

}  // namespace homewarden
