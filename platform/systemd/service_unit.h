#pragma once

#include <string>

#include "platform/linux/service_command.h"

namespace homewarden::systemd {

inline constexpr const char* kUnitName = "wardengine.service";

// The unit file that has a person's own service manager run the command. Whatever bytes the
// command has, they reach the program as they are; what is not UTF-8 systemd will not read.
std::string service_unit(const os_linux::ServiceCommand& command);

}  // namespace homewarden::systemd
