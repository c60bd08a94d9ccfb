#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace homewarden::os_linux {

// How the background service is started on the same house as this program.
struct ServiceCommand {
  std::filesystem::path program;
  std::vector<std::string> arguments;
  std::vector<std::string> environment;  // NAME=value
};

// `folder` is the application folder that this run was given. The program is `wardengine` beside
// this one, whether it is there or not. Only the environment that places a house is named; paths
// are made absolute, because a service starts in another folder.
ServiceCommand service_command(const std::optional<std::filesystem::path>& folder);

}  // namespace homewarden::os_linux
