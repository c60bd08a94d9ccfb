#pragma once

#include <sys/types.h>

#include <optional>

#include "platform/linux/service_command.h"

namespace homewarden::os_linux {

// Starts a process that stays when this one, its terminal and its session go: in a session and in
// the folder "/", without descriptors and standard streams of this one, with its environment and
// the command's. Does not wait for it; waitpid() tells of its end. Nothing and errno when it cannot
// be started. Needs no event loop.
std::optional<pid_t> start_detached(const ServiceCommand& command);

}  // namespace homewarden::os_linux
