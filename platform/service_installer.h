#pragma once

#include <string>

#include "base/signal.h"

namespace homewarden {

// Makes the background service known to the machine's service manager, and takes it away again.
// Neither starts nor stops it: that is ServiceControl's. No call waits for the manager.
class ServiceInstaller {
 public:
  virtual ~ServiceInstaller() = default;

  // False where there can be no service: then it is not offered, and the calls do nothing.
  virtual bool is_available() const = 0;

  // Installing what is installed already renews it.
  virtual void install() = 0;
  // Nothing is wrong when it is not installed. A service that runs goes on until it is stopped.
  virtual void remove() = 0;

  // What install() or remove() could not do, in a sentence for a person; empty when the last call
  // went well. May come long after the call.
  Signal<std::string> reported;
};

}  // namespace homewarden
