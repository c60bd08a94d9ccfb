#pragma once

#include <filesystem>

namespace homewarden::os_linux {

// Brings the pages, pictures and sounds that were installed with the program into the folder of a
// house, where they are the person's to change. A file that the folder does not have, in any letter
// case, is copied. One that is still as it was installed once is replaced by what is installed now;
// one that the person has changed, or put a link in the place of, stays. What was installed is
// remembered in the folder as "installed.sums".
//
// A file that cannot be read or written is left as it is and tried again at the next start; a stop
// at any moment leaves whole files.
void bring_installed_files(const std::filesystem::path& installed,
                           const std::filesystem::path& folder);

}  // namespace homewarden::os_linux
