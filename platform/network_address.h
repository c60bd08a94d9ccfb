#pragma once

#include <array>
#include <cstdint>

namespace homewarden {

// A network address. An IPv4 address is held, and compared, in its IPv6 form (::ffff:a.b.c.d), as a
// socket for both kinds reports it.
struct NetworkAddress {
  std::array<std::uint8_t, 16> bytes{};

  friend bool operator==(const NetworkAddress&, const NetworkAddress&) = default;
  friend bool operator<(const NetworkAddress& a, const NetworkAddress& b) {
    return a.bytes < b.bytes;
  }
};

}  // namespace homewarden
