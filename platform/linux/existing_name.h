#pragma once

#include <filesystem>

namespace homewarden::os_linux {

// Whether anything at all has this name: a file, a folder, a link that leads nowhere. True also
// when that cannot be told, as in a folder that must not be entered.
bool is_taken(const std::filesystem::path& file);

// The name under which a file is there: the one given when it is taken, else one that differs from
// it in letter case alone, of several the first in byte order. The one given when there is none.
// The same goes for the folders on the way. Reads a folder only when the name given is not taken.
std::filesystem::path existing_name(const std::filesystem::path& file);

}  // namespace homewarden::os_linux
