#include "app/common/serial_trace.h"

#include <cstdio>
#include <string>
#include <string_view>

#include "app/common/standard_output.h"

namespace homewarden {

void trace_serial_line(cm11::Driver& driver, const EventLoop& loop) {
  driver.set_trace([&loop](char direction, std::string_view bytes) {
    char piece[32];
    const auto seconds = static_cast<double>(loop.uptime().count()) / 1000;
    std::snprintf(piece, sizeof piece, "%10.3f %c", seconds, direction);
    std::string line = piece;
    if (direction == '#') {
      line.append(" ").append(bytes);
    } else {
      for (const char byte : bytes) {
        std::snprintf(piece, sizeof piece, " %02X", static_cast<unsigned char>(byte));
        line += piece;
      }
    }
    standard_error().print(line);
  });
}

}  // namespace homewarden
