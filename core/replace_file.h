#pragma once

#include <filesystem>
#include <string_view>

#include "platform/files.h"

namespace homewarden {

// Replaces the content of a file, which may be missing. After a stop at any moment the old or the
// new content stands under the name. False when it could not be done; the old content is still
// there.
inline bool replace_file(Files& files, const std::filesystem::path& file,
                         std::string_view content) {
  std::filesystem::path unfinished = file;
  unfinished += ".new";
  if (files.write(unfinished, content) && files.rename(unfinished, file)) return true;
  files.remove(unfinished);
  return false;
}

// Removes what a replacement that was stopped half-way left beside the file. The file itself is
// never touched.
inline void discard_unfinished(Files& files, const std::filesystem::path& file) {
  std::filesystem::path unfinished = file;
  unfinished += ".new";
  if (files.exists(unfinished)) files.remove(unfinished);
}

}  // namespace homewarden
