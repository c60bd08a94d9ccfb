#pragma once

#include <QString>
#include <filesystem>
#include <functional>
#include <string>

#include "platform/linux/posix_files.h"
#include "platform/linux/service_command.h"
#include "platform/service_control.h"
#include "platform/service_installer.h"
#include "platform/systemd/lingering.h"
#include "platform/systemd/user_manager.h"

namespace homewarden::systemd {

// The service "Wardengine" as wardengine.service of the person's own service manager.
class UserServices : public ServiceControl, public ServiceInstaller {
 public:
  // `command` is what the service runs, `config_home` the folder of the person's settings: the unit
  // is written to systemd/user below it.
  UserServices(const os_linux::ServiceCommand& command, const std::filesystem::path& config_home);

  // Whether the person has a service manager in this session. Waits half a second at most.
  static bool manager_is_there() { return UserManager::is_there(); }

  // Waits half a second at most, and not at all for a manager that has just kept silent.
  ServiceState query(const std::string& machine, const std::string& service) override;
  // A unit that another version or another folder wrote is brought up to date first.
  void start(const std::string& machine, const std::string& service) override;
  void stop(const std::string& machine, const std::string& service) override;

  bool is_available() const override;
  // The service also starts with the computer, and stays when the person logs out.
  void install() override;
  void remove() override;

 private:
  bool write_unit();
  void renew_unit();
  // What follows a step of the call that is made now, unless another call comes in between. A step
  // that fails ends the call with a report: the text with %1 for the reason.
  UserManager::Done after(const QString& failure, std::function<void()> next);
  void report(const QString& text);

  const std::filesystem::path program_;
  const std::filesystem::path unit_file_;
  const std::string unit_;
  os_linux::PosixFiles files_;
  unsigned call_ = 0;
  Lingering lingering_;
  UserManager manager_;
};

}  // namespace homewarden::systemd
