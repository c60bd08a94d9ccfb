#pragma once

#include <string>

#include "platform/registry.h"
#include "platform/service_installer.h"
#include "platform/shell.h"

namespace homewarden::windows {

// Installs the service "Wardengine" with the two tools in ntservice\ below the Windows folder:
// INSTSRV makes and removes services, SRVANY.EXE is the host that runs what the service's value
// "Application" names.
class ServiceTools : public ServiceInstaller {
 public:
  // Folders without a backslash at the end. Without a Windows folder there is no service.
  ServiceTools(Shell& shell, Registry& registry, std::string windows_folder,
               std::string application_folder);

  bool is_available() const override { return !windows_folder_.empty(); }
  // What the tools answer is not known: only a tool that could not be begun is reported.
  void install() override;
  void remove() override;

 private:
  void run(const std::string& arguments, const std::string& failure);
  void write(const std::string& key, const std::string& name, const std::string& text);

  Shell& shell_;
  Registry& registry_;
  std::string windows_folder_;
  std::string application_folder_;
};

}  // namespace homewarden::windows
