#pragma once

#include <string>

#include "base/task.h"
#include "core/module1.h"
#include "platform/event_loop.h"
#include "platform/interface_control.h"
#include "ui/controls.h"

namespace homewarden {

// Tries the COM ports for an interface: the stored one, then 1 to 15. The one that answers stays
// open.
class PortTrial {
 public:
  enum class Manner {
    kThorough,  // says in the status line what it tries; four attempts at the stored port
    kQuiet,     // one attempt at each port
  };
  struct Result {
    int port = 0;                     // that answers; 0: none
    bool stored_port_failed = false;  // it is there but nothing answers; no other one was tried
  };

  PortTrial(StatusBar& status, EventLoop& loop, Module1& module1,
            InterfaceControl& interface_control);

  // Takes seconds: every port that does not answer is waited for. The ports 1 to 15 are tried only
  // when no port is stored, or the stored one does not exist or cannot be opened.
  Task<Result> try_ports(Manner manner);

  // Remembers the port, "1" to "15", for the next search; "none" makes it try all.
  void store_port(const std::string& port);

 private:
  Task<int> open_stored_port(int port, Manner manner);
  Task<int> scan_ports(int skipped_port, Manner manner);

  StatusBar& status_;
  EventLoop& loop_;
  Module1& module1_;
  InterfaceControl& interface_;
};

}  // namespace homewarden
