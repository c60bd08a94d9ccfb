#pragma once

#include <string>

#include "platform/linux/port_names.h"

namespace homewarden::os_linux {

// Which of the ports exist but may not be opened by who runs this program, and what to do about it:
// whole sentences in the system code page, with the group that a port belongs to. "" when there is
// none. Looks at the permissions of the files, opens nothing.
std::string refused_ports(const PortNames& names);

}  // namespace homewarden::os_linux
