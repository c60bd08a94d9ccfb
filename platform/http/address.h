#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/network_address.h"

namespace homewarden::http {

// Of a client.
using Address = NetworkAddress;

// The port that a text names, blanks around it allowed; nothing when it is no number from 1 to
// 65535.
std::optional<std::uint16_t> parse_port(const std::string& text);

// An address as people write it, without brackets; nothing when it is none.
std::optional<Address> parse_address(std::string_view text);

// As people write it, IPv6 in its shortest form in lower case; what parse_address() reads.
std::string text_of(const Address& address);

// "192.168.0.0/16", "fd00::/8", or an address, which is a network of one. Bits of the address
// behind the prefix do not matter. Nothing when it is none, or names all addresses there are.
std::optional<NetworkPrefix> parse_prefix(std::string_view text);

// Whether it is of this machine or of a network that is not routed over the internet: 127/8,
// 10/8, 172.16/12, 192.168/16, 169.254/16, ::1, fc00::/7, fe80::/10.
bool is_private(const Address& address);

// The first 64 or 48 bits of an IPv6 address, with zeros behind them: what one device of a private
// network or one household has as its own, and what a customer of a provider may have at most. ::1
// and IPv4 addresses stand for themselves.
Address network_of(const Address& address);
Address site_of(const Address& address);

}  // namespace homewarden::http
