#include "platform/linux/supervised_services.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/linux/detached_process.h"
#include "platform/linux/lock_file_instance.h"
#include "platform/linux/posix_files.h"
#include "platform/linux/supervisor_file.h"

namespace homewarden::os_linux {
namespace {

const char* const kName = "Wardengine";
const char* const kMark = "service.installed";
const char* const kMarkText =
    "Homewarden's background service is installed for this person: the window starts it when it\n"
    "closes. The check box in the settings makes and removes this file.\n";

}  // namespace

SupervisedServices::SupervisedServices(const Folders& folders, ServiceCommand command)
    : supervisor_file_(folders.machine / kSupervisorFile),
      service_lock_(folders.machine / kServiceLock),
      mark_(folders.user / kMark),
      command_(std::move(command)) {
  command_.arguments.insert(command_.arguments.begin(), "--supervise");
}

SupervisedServices::~SupervisedServices() {
  take_ended();
}

ServiceState SupervisedServices::query(const std::string& machine, const std::string& service) {
  take_ended();
  if (!is_installed(machine, service)) return ServiceState::kUnknown;
  const auto supervisor = find_supervisor(supervisor_file_);
  if (!supervisor) return ServiceState::kStopped;
  if (supervisor->stopping) return ServiceState::kStopPending;
  return LockFileInstance(service_lock_).another_is_running() ? ServiceState::kRunning
                                                              : ServiceState::kStartPending;
}

// Of several that are started one stays, and one that is started while another is stopping waits
// for its end.
void SupervisedServices::start(const std::string& machine, const std::string& service) {
  if (!is_installed(machine, service)) return;
  take_ended();
  if (const auto process = start_detached(command_))
    started_.push_back(*process);
  else
    report_failure("The background service could not be started", errno);
}

void SupervisedServices::stop(const std::string& machine, const std::string& service) {
  if (is_installed(machine, service)) ask_supervisor_to_end(supervisor_file_);
}

bool SupervisedServices::is_available() const {
  return ::access(command_.program.c_str(), X_OK) == 0;
}

void SupervisedServices::install() {
  if (!is_available()) return;
  std::error_code ignored;
  std::filesystem::create_directories(mark_.parent_path(), ignored);
  if (PosixFiles().write(mark_, kMarkText))
    reported("");
  else
    report_failure("The background service could not be installed, " + mark_.string(), errno);
}

void SupervisedServices::remove() {
  if (!is_available()) return;
  if (::unlink(mark_.c_str()) == 0 || errno == ENOENT)
    reported("");
  else
    report_failure("The background service could not be removed, " + mark_.string(), errno);
}

bool SupervisedServices::is_installed(const std::string& machine,
                                      const std::string& service) const {
  return machine.empty() && service == kName && ::access(mark_.c_str(), F_OK) == 0;
}

void SupervisedServices::report_failure(const std::string& what, int error) {
  reported(what + ": " + std::strerror(error) + ".");
}

// Of processes that have ended something stays until somebody asks for it.
void SupervisedServices::take_ended() {
  std::erase_if(started_, [](pid_t process) { return ::waitpid(process, nullptr, WNOHANG) != 0; });
}

}  // namespace homewarden::os_linux
