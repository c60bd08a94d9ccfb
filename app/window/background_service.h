#pragma once

#include <functional>
#include <memory>

#include "app/common/options.h"
#include "core/program/steps.h"
#include "platform/linux/folders.h"
#include "platform/logon_entry.h"
#include "platform/service_control.h"
#include "platform/service_installer.h"

namespace homewarden {

// How the house goes on without this window: the service manager that this run works with, and the
// entry that starts the window at logon.
class BackgroundService {
 public:
  // The demo has neither. A run without a screen has no entry: nobody logs on to a desktop there.
  BackgroundService(const AppOptions& options, bool offscreen);

  ServiceControl& control() { return *services_.control; }
  ServiceInstaller& installer() { return *services_.installer; }
  LogonEntry& logon_entry() { return *logon_entry_; }

  // Starts the service, if it is installed, without an event loop and without waiting: for the
  // moment in which the process ends.
  void start_at_exit() { services_.start_at_exit(); }

 private:
  // One object behind two interfaces.
  struct Services {
    template <class Manager>
    explicit Services(std::shared_ptr<Manager> manager)
        : control(manager),
          installer(manager),
          start_at_exit([manager] { manager->start("", kServiceName); }) {}

    std::shared_ptr<ServiceControl> control;
    std::shared_ptr<ServiceInstaller> installer;
    std::function<void()> start_at_exit;
  };
  static Services choose_services(const AppOptions& options);

  Services services_;
  std::unique_ptr<LogonEntry> logon_entry_;
};

}  // namespace homewarden
