#pragma once

#include "platform/service_control.h"
#include "platform/service_installer.h"

namespace homewarden::os_linux {

// Where there is no background service: none to ask, to start or to stop, and none can be
// installed.
class AbsentServices : public ServiceControl, public ServiceInstaller {
 public:
  ServiceState query(const std::string& /*machine*/, const std::string& /*service*/) override {
    return ServiceState::kUnknown;
  }
  void start(const std::string& /*machine*/, const std::string& /*service*/) override {}
  void stop(const std::string& /*machine*/, const std::string& /*service*/) override {}

  bool is_available() const override { return false; }
  void install() override {}
  void remove() override {}
};

}  // namespace homewarden::os_linux
