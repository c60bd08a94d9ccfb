#pragma once

#include <string>

namespace homewarden {

// The states of a service as its manager numbers them.
enum class ServiceState {
  kUnknown = 0,  // not installed, or its manager cannot be asked
  kStopped = 1,
  kStartPending = 2,
  kStopPending = 3,
  kRunning = 4,
  kContinuePending = 5,
  kPausePending = 6,
  kPaused = 7,
};

// Background services of a machine; "" names this machine. None of the calls waits for the service.
class ServiceControl {
 public:
  virtual ~ServiceControl() = default;

  virtual ServiceState query(const std::string& machine, const std::string& service) = 0;
  // Ask for it; query() tells what came of it. Nothing happens for one that is not installed.
  virtual void start(const std::string& machine, const std::string& service) = 0;
  virtual void stop(const std::string& machine, const std::string& service) = 0;
};

}  // namespace homewarden
