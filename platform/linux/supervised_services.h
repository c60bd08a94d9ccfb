#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/linux/folders.h"
#include "platform/linux/service_command.h"
#include "platform/service_control.h"
#include "platform/service_installer.h"

namespace homewarden::os_linux {

// The background service of a system without a service manager: `wardengine --supervise`
// (platform/linux/supervisor.h) keeps it running. Installed is a mark in the person's own folder.
class SupervisedServices : public ServiceControl, public ServiceInstaller {
 public:
  // `command` is that of the service itself.
  SupervisedServices(const Folders& folders, ServiceCommand command);
  SupervisedServices(const SupervisedServices&) = delete;
  SupervisedServices& operator=(const SupervisedServices&) = delete;
  ~SupervisedServices() override;

  // There is one service on one machine: others are unknown. It starts until it has its lock.
  ServiceState query(const std::string& machine, const std::string& service) override;
  // Does not wait, and needs no event loop. `reported` tells when nothing could be started.
  void start(const std::string& machine, const std::string& service) override;
  void stop(const std::string& machine, const std::string& service) override;

  bool is_available() const override;
  void install() override;
  void remove() override;

 private:
  bool is_installed(const std::string& machine, const std::string& service) const;
  void report_failure(const std::string& what, int error);
  void take_ended();

  std::filesystem::path supervisor_file_;
  std::filesystem::path service_lock_;
  std::filesystem::path mark_;
  ServiceCommand command_;
  std::vector<pid_t> started_;  // whose end nobody has been told yet
};

}  // namespace homewarden::os_linux
