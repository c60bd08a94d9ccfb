#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/descriptor.h"

namespace homewarden {

// The port that a text names, blanks around it allowed; nothing when it is no number from 1 to
// 65535.
std::optional<std::uint16_t> parse_port(const std::string& text);

// A socket that listens: on the address, or for "" on all addresses of the machine, of IPv6 and
// IPv4, where the machine has no IPv6 of IPv4 alone. Not open when the port is taken.
Descriptor listen_on(const std::string& address, std::uint16_t port);

}  // namespace homewarden
