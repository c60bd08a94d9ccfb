#pragma once

#include <string>

#include "base/signal.h"
#include "base/task.h"

namespace homewarden {

// X10 function codes of the power-line protocol.
enum X10Function : int {
  kX10AllUnitsOff = 0,
  kX10AllLightsOn = 1,
  kX10On = 2,
  kX10Off = 3,
  kX10Dim = 4,
  kX10Bright = 5,
  kX10AllLightsOff = 6,
};

// The X10 computer interface, the only way to the power line.
//
// Calls queue in their order: the address and the function of one command are never separated, and
// a command that waits for its turn holds up nobody but its caller.
class InterfaceControl {
 public:
  virtual ~InterfaceControl() = default;

  // COM port 1 to 15 that the next OpenInterface uses.
  virtual void PortNumber(int port) = 0;

  // 0: an interface answers on the port and is ready. 1: the port does not exist, is in use or may
  // not be opened, answered at once; or it was unplugged or closed meanwhile. 2: the port could be
  // opened but nothing that is an interface answered within seconds; worth another try. An
  // interface that is open is closed first.
  virtual Task<int> OpenInterface() = 0;

  // Which serial ports exist but may not be opened by this person, and what to do about it: whole
  // sentences in the system code page. "" when there is none. Looked up anew by each call, at once.
  virtual std::string refused_ports() = 0;

  // What the controller asks of the interface after a successful open; 4 is the only value used:
  // report every command that is seen on the power line.
  virtual void NumericOption(int option) = 0;

  // Named in traces of the serial line.
  virtual void ClientName(const std::string& name) = 0;

  // True when the port is closed (also when it was not open). Commands that wait are given up.
  virtual Task<bool> CloseInterface() = 0;

  // Whether a command from the power line is on its way here and would be lost by closing now: the
  // interface gives each away once. Not for longer than a few seconds without a new one.
  virtual bool is_receiving() = 0;

  // Sends one command and returns when the interface is ready again, or has been given up for this
  // command within a bounded time. `house` is a letter A to P, `unit` 1 to 16 as decimal text,
  // `amount` 0 to 100 the percentage of the dimming range for Dim and Bright, rounded to the 22
  // steps of the protocol; the last two are accepted and not used. A function that goes to
  // the whole house takes no notice of `unit`. Commands are given up when the interface stays
  // unplugged for some seconds.
  //
  // 0: the module's command went out on the power line; whether the module heard it nobody knows.
  // Anything else: it did not, for certain or possibly, and TroubleChanged says why.
  virtual Task<int> SendX10(std::string house, std::string unit, int function, double amount,
                            int option1, int option2) = 0;

  // Raised once for each command that the interface reports from the power line and each unit it is
  // addressed to, in order: the address as "A12", or "A" for a command to the whole house; the
  // function code.
  Signal<const std::string&, int> CommandReceived;

  // Raised when what a person should know about the interface changes: the text for a status panel
  // when something is wrong ("STATUS: A3 On could not be sent, the interface does not answer"), ""
  // when all is well again.
  Signal<const std::string&> TroubleChanged;
};

}  // namespace homewarden
