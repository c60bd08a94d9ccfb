#include "platform/linux/existing_name.h"

#include <sys/stat.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "base/text.h"

namespace homewarden::os_linux {

namespace fs = std::filesystem;

bool is_taken(const fs::path& file) {
  struct stat info {};
  if (::lstat(file.c_str(), &info) == 0) return true;
  return errno != ENOENT && errno != ENOTDIR && errno != ENAMETOOLONG;
}

fs::path existing_name(const fs::path& file) {
  if (is_taken(file) || !file.has_filename()) return file;
  fs::path folder = file.parent_path();
  if (!folder.empty()) folder = existing_name(folder);
  const std::string wanted = file.filename().string();
  std::string found;
  std::error_code error;
  for (fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, error), end;
       !error && entry != end; entry.increment(error)) {
    std::string name = entry->path().filename().string();
    if (equals_ignoring_case(name, wanted) && (found.empty() || name < found))
      found = std::move(name);
  }
  return found.empty() ? file : folder / found;
}

}  // namespace homewarden::os_linux
