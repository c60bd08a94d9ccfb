#include "platform/linux/service_command.h"

#include <cstdlib>
#include <system_error>

#include "platform/linux/folders.h"

namespace homewarden::os_linux {
namespace {

namespace fs = std::filesystem;

const char* const kFolderVariables[] = {"HOMEWARDEN_MACHINE_DIR", "HOMEWARDEN_USER_DIR",
                                        "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME"};

fs::path made_absolute(const fs::path& path) {
  std::error_code error;
  const fs::path result = fs::absolute(path, error);
  return error ? path : result;
}

}  // namespace

ServiceCommand service_command(const std::optional<fs::path>& folder) {
  ServiceCommand command;
  command.program = program_file().parent_path() / "wardengine";
  if (folder && !folder->empty()) command.arguments = {"--folder", made_absolute(*folder).string()};
  for (const char* name : kFolderVariables) {
    const char* value = std::getenv(name);
    if (value && *value)
      command.environment.push_back(std::string(name) + "=" + made_absolute(value).string());
  }
  const char* address = std::getenv("HOMEWARDEN_WEB_ADDRESS");
  if (address && *address)
    command.environment.push_back(std::string("HOMEWARDEN_WEB_ADDRESS=") + address);
  return command;
}

}  // namespace homewarden::os_linux
