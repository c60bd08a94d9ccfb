#pragma once

#include <filesystem>

#include "platform/store/values.h"

namespace homewarden::store {

// Reads all values of a file that cannot be opened for writing: its own permissions, its folder's,
// a disk that takes no changes or has no room. What a crash left in the log beside it counts. A
// file that does not exist has no values. Answers a result code of the library; `values` is of no
// meaning unless that is "ok". The file itself is not changed.
int read_without_writing(const std::filesystem::path& file, Values& values);

// When the file and its log were changed last, and their sizes. The same text: nothing has changed.
std::string stamp_of(const std::filesystem::path& file);

}  // namespace homewarden::store
