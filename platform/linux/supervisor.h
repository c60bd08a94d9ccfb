#pragma once

#include <chrono>
#include <filesystem>
#include <string>

#include "platform/linux/poller.h"
#include "platform/linux/restart_pauses.h"
#include "platform/linux/service_command.h"
#include "platform/linux/service_log.h"
#include "platform/linux/supervised_child.h"
#include "platform/linux/supervisor_file.h"

namespace homewarden::os_linux {

inline const char* const kServiceLog = "wardengine.log";  // in the machine-wide folder

// What a service manager does for one service: keeps it running until it ends by itself, somebody
// asks for the end, or the house is taken away. For a process with a single thread, whose signals
// and current folder it takes over.
class Supervisor {
 public:
  // The service has its own limits, about 32 seconds in all.
  static constexpr std::chrono::seconds kStopLimit{40};

  // `folder` is the machine-wide one. A service that has not ended `stop_limit` after it was asked
  // to is killed.
  Supervisor(const std::filesystem::path& folder, ServiceCommand command,
             std::chrono::seconds stop_limit);

  // Returns the exit code of the process: 0 also where another supervisor has the house already.
  // One that is stopping is waited for.
  int run();

 private:
  SupervisorFile::Taken take_place();
  bool serve();
  void stop(SupervisedChild& child);
  bool wait(SupervisedChild& child, std::chrono::milliseconds until);
  void take_output(SupervisedChild& child);
  void pause(std::chrono::milliseconds length);
  bool is_wanted() const { return !asked_ && file_.is_there(); }
  void print(const std::string& text);

  std::filesystem::path path_;
  ServiceCommand command_;
  std::chrono::seconds stop_limit_;
  EndSignals signals_;
  SupervisorFile file_;
  ServiceLog log_;
  RestartPauses pauses_;
  bool asked_ = false;  // to end
};

}  // namespace homewarden::os_linux
