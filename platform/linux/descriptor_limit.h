#pragma once

#include <cstddef>

namespace homewarden::os_linux {

// Lets this process have so many sockets and files open at once, or as many as it may allow itself.
// What it forks begins with what it was given itself, as programs may count on few.
void raise_descriptor_limit(std::size_t most = 16384);

}  // namespace homewarden::os_linux
