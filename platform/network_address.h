#pragma once

#include <array>
#include <cstddef>
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

// All addresses whose first `bits` are those of `address`; 96 bits more than usual for IPv4.
struct NetworkPrefix {
  NetworkAddress address;
  unsigned bits = 128;  // 0 to 128

  bool contains(const NetworkAddress& other) const {
    for (std::size_t i = 0; i < other.bytes.size(); ++i) {
      if (bits <= 8 * i) return true;
      const unsigned counted = bits - static_cast<unsigned>(8 * i);
      const unsigned mask = counted >= 8 ? 0xffU : 0xff00U >> counted;
      if (((address.bytes[i] ^ other.bytes[i]) & mask) != 0) return false;
    }
    return true;
  }

  friend bool operator==(const NetworkPrefix&, const NetworkPrefix&) = default;
};

}  // namespace homewarden
