#include "app/window/background_service.h"

#include <string>
#include <utility>
#include <vector>

#include "platform/linux/absent_logon_entry.h"
#include "platform/linux/absent_services.h"
#include "platform/linux/autostart_entry.h"
#include "platform/linux/detached_process.h"
#include "platform/linux/service_command.h"
#include "platform/linux/supervised_services.h"
#include "platform/systemd/service_unit.h"
#include "platform/systemd/user_services.h"

namespace homewarden {
namespace {

const char* const kSystemctl = "/usr/bin/systemctl";

std::unique_ptr<LogonEntry> choose_logon_entry(const AppOptions& options, bool offscreen) {
  if (options.demo || offscreen) return std::make_unique<os_linux::AbsentLogonEntry>();
  // On the same house as the service.
  const os_linux::ServiceCommand same = os_linux::service_command(options.folder);
  return std::make_unique<os_linux::AutostartEntry>(
      os_linux::autostart_folder(), os_linux::program_file(), same.arguments, same.environment);
}

}  // namespace

BackgroundService::BackgroundService(const AppOptions& options, bool offscreen)
    : services_(choose_services(options)), logon_entry_(choose_logon_entry(options, offscreen)) {}

BackgroundService::Services BackgroundService::choose_services(const AppOptions& options) {
  if (options.demo) return Services(std::make_shared<os_linux::AbsentServices>());
  os_linux::ServiceCommand command = os_linux::service_command(options.folder);
  if (systemd::UserServices::manager_is_there()) {
    Services systemd(
        std::make_shared<systemd::UserServices>(std::move(command), os_linux::config_home()));
    // Its own calls would go out with the next turn of the loop.
    systemd.start_at_exit = [] {
      os_linux::start_detached(
          {kSystemctl, {"--user", "--no-block", "start", systemd::kUnitName}, {}});
    };
    return systemd;
  }
  return Services(std::make_shared<os_linux::SupervisedServices>(
      os_linux::find_folders(options.folder), std::move(command)));
}

}  // namespace homewarden
