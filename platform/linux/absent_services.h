#pragma once

#include "platform/service_control.h"

namespace homewarden::os_linux {

// The service control of a system on which no background service is installed: there is none to
// ask, to start or to stop.
class AbsentServices : public ServiceControl {
 public:
  ServiceState query(const std::string& /*machine*/, const std::string& /*service*/) override {
    return ServiceState::kUnknown;
  }
  void start(const std::string& /*machine*/, const std::string& /*service*/) override {}
  void stop(const std::string& /*machine*/, const std::string& /*service*/) override {}
};

}  // namespace homewarden::os_linux
