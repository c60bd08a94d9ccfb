#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

struct sockaddr;

namespace homewarden {

// The network address of a client. An IPv4 address is held, and compared, in its IPv6 form
// (::ffff:a.b.c.d), as a socket for both kinds reports it.
struct Address {
  std::array<std::uint8_t, 16> bytes{};

  friend bool operator==(const Address&, const Address&) = default;
  friend bool operator<(const Address& a, const Address& b) { return a.bytes < b.bytes; }
};

// The unspecified address, which is nobody's, for a socket of another kind.
Address address_of(const sockaddr* from);

// An address as people write it, without brackets; nothing when it is none.
std::optional<Address> parse_address(const std::string& text);

// Whether it is of this machine or of a network that is not routed over the internet: 127/8,
// 10/8, 172.16/12, 192.168/16, 169.254/16, ::1, fc00::/7, fe80::/10.
bool is_private(const Address& address);

// What one customer of a network provider has as his own: the first 64 bits of an IPv6 address
// of the internet. Any other address stands for itself.
Address network_of(const Address& address);

}  // namespace homewarden
