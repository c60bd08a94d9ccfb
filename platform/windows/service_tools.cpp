#include "platform/windows/service_tools.h"

#include <utility>

namespace homewarden::windows {
namespace {

const std::string kName = "Wardengine";
const std::string kServiceKey = "SYSTEM\\CurrentControlSet\\Services\\Wardengine";

}  // namespace

ServiceTools::ServiceTools(Shell& shell, Registry& registry, std::string windows_folder,
                           std::string application_folder)
    : shell_(shell),
      registry_(registry),
      windows_folder_(std::move(windows_folder)),
      application_folder_(std::move(application_folder)) {}

// The values need not wait for the tool: writing them makes the keys.
void ServiceTools::install() {
  if (!is_available()) return;
  run(kName + " " + windows_folder_ + "\\ntservice\\SRVANY.EXE",
      "The background service could not be installed: the tool INSTSRV cannot be started.");
  write(kServiceKey + "\\Parameters", "Application", application_folder_ + "\\Wardengine.exe");
  write(kServiceKey, "Description",
        "This is the Homewarden service engine. Without this, you wouldnt be able to control your "
        "X10 devices whilst logged out of your computer");
}

void ServiceTools::remove() {
  if (!is_available()) return;
  run(kName + " REMOVE",
      "The background service could not be removed: the tool INSTSRV cannot be started.");
}

void ServiceTools::run(const std::string& arguments, const std::string& failure) {
  const bool begun = shell_.run(windows_folder_ + "\\ntservice\\INSTSRV " + arguments);
  reported(begun ? std::string() : failure);
}

void ServiceTools::write(const std::string& key, const std::string& name, const std::string& text) {
  registry_.write(RegistryRoot::kLocalMachine, key, name, {RegistryType::kString, text});
}

}  // namespace homewarden::windows
