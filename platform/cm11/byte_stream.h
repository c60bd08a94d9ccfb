#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/signal.h"

namespace homewarden::cm11 {

// A serial port at 4800 baud, 8 data bits, no parity, 1 stop bit, named by its COM number.
class ByteStream {
 public:
  virtual ~ByteStream() = default;

  // Opens COM port `port` for this program alone; closes the one that is open. False, at once, when
  // it does not exist, is in use or may not be opened.
  virtual bool open(int port) = 0;
  // Nothing happens when no port is open. `Lost` is not raised.
  virtual void close() = 0;
  virtual bool is_open() const = 0;

  // Bytes written to a port that is not open are gone.
  virtual void write(std::string_view bytes) = 0;

  // The COM ports 1 to 15 that exist now, in ascending order, whether or not they can be opened.
  virtual std::vector<int> present_ports() = 0;

  // See InterfaceControl::refused_ports().
  virtual std::string refused_ports() { return ""; }

  // Bytes that arrived, in order, in pieces of any size. Raised from the event loop.
  Signal<std::string_view> Received;

  // The port that was open is gone (unplugged); it is closed when this is raised.
  Signal<> Lost;
};

}  // namespace homewarden::cm11
