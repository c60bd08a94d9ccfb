#pragma once

#include <string>
#include <vector>

namespace homewarden {

// The IPv4 addresses under which other devices in the network reach this machine: not its loopback
// address, and none of a network interface that is down.
std::vector<std::string> own_addresses();

}  // namespace homewarden
