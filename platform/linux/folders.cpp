#include "platform/linux/folders.h"

#include <unistd.h>

#include <cstdlib>
#include <system_error>

#include "platform/linux/existing_name.h"
#include "platform/linux/installed_files.h"

namespace homewarden::os_linux {
namespace {

namespace fs = std::filesystem;

const char* const kName = "homewarden";

std::optional<fs::path> from_environment(const char* name) {
  const char* value = std::getenv(name);
  if (!value || !*value) return std::nullopt;
  return fs::path(value);
}

fs::path home() {
  return from_environment("HOME").value_or(fs::temp_directory_path());
}

bool may_write(const fs::path& folder) {
  return ::access(folder.c_str(), W_OK | X_OK) == 0;
}

fs::path machine_folder() {
  if (const auto folder = from_environment("HOMEWARDEN_MACHINE_DIR")) return *folder;
  const fs::path shared = fs::path("/var/lib") / kName;
  if (may_write(shared)) return shared;
  return from_environment("XDG_STATE_HOME").value_or(home() / ".local" / "state") / kName;
}

fs::path user_folder() {
  if (const auto folder = from_environment("HOMEWARDEN_USER_DIR")) return *folder;
  return config_home() / kName;
}

fs::path application_folder(const std::optional<fs::path>& wanted) {
  if (wanted && !wanted->empty()) return fs::absolute(*wanted);
  const fs::path program = program_file().parent_path();
  std::error_code ignored;
  const bool has_house = is_taken(existing_name(program / "rmlst.hwd"));
  const bool is_complete = fs::exists(program / "html", ignored) && may_write(program);
  return has_house || is_complete ? program : data_home() / kName;
}

}  // namespace

fs::path config_home() {
  return from_environment("XDG_CONFIG_HOME").value_or(home() / ".config");
}

fs::path data_home() {
  return from_environment("XDG_DATA_HOME").value_or(home() / ".local" / "share");
}

fs::path program_file() {
  std::error_code ignored;
  return fs::read_symlink("/proc/self/exe", ignored);
}

Folders find_folders(const std::optional<fs::path>& wanted) {
  return Folders{application_folder(wanted), machine_folder(), user_folder()};
}

bool fill_application_folder(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  // The pages and pictures are looked for in "html", whoever may have written it otherwise.
  const fs::path html = folder / "html";
  const fs::path found = existing_name(html);
  if (found != html) fs::rename(found, html, error);
  const fs::path program = program_file().parent_path();
  for (const fs::path& installed :
       {program.parent_path() / "share" / kName, program / "share" / kName}) {
    if (!fs::is_directory(installed, error)) continue;
    bring_installed_files(installed, folder);
    break;
  }
  return may_write(folder);
}

}  // namespace homewarden::os_linux
