#include "platform/systemd/unit_state.h"

namespace homewarden::systemd {

// A unit whose file has gone runs on until it is stopped.
ServiceState service_state(const UnitState& unit) {
  if (unit.active == "active" || unit.active == "reloading") return ServiceState::kRunning;
  if (unit.active == "activating") return ServiceState::kStartPending;
  if (unit.active == "deactivating") return ServiceState::kStopPending;
  const bool is_at_rest = unit.active == "inactive" || unit.active == "failed";
  if (!is_at_rest || unit.load != "loaded") return ServiceState::kUnknown;
  const bool will_start = unit.job == "start" || unit.job == "restart";
  return will_start ? ServiceState::kStartPending : ServiceState::kStopped;
}

}  // namespace homewarden::systemd
