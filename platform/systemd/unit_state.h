#pragma once

#include <QString>

#include "platform/service_control.h"

namespace homewarden::systemd {

// What the manager says of a unit, in its words.
struct UnitState {
  QString load;    // "loaded", "not-found", "masked", ...
  QString active;  // "active", "activating", "inactive", "failed", ...
  QString job;     // what is about to be done, "start", "stop", ...; "" for nothing
};

// kUnknown for a unit that does not run and cannot be started. One that waits to be started again
// after it failed is about to start.
ServiceState service_state(const UnitState& unit);

}  // namespace homewarden::systemd
