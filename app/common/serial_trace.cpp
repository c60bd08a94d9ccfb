#include "app/common/serial_trace.h"

#include <cstdio>
#include <string_view>

namespace homewarden {

void trace_serial_line(cm11::Driver& driver, const EventLoop& loop) {
  driver.set_trace([&loop](char direction, std::string_view bytes) {
    std::fprintf(stderr, "%10.3f %c", static_cast<double>(loop.uptime().count()) / 1000, direction);
    if (direction == '#') {
      std::fprintf(stderr, " %.*s", static_cast<int>(bytes.size()), bytes.data());
    } else {
      for (const char byte : bytes)
        std::fprintf(stderr, " %02X", static_cast<unsigned>(static_cast<unsigned char>(byte)));
    }
    std::fputc('\n', stderr);
  });
}

}  // namespace homewarden
