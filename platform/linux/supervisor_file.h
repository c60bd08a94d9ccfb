#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>

#include "platform/linux/descriptor.h"

namespace homewarden::os_linux {

// In the machine-wide folder. The lock on it says whether a supervisor runs, and which process that
// is; number and word in it are for people, and tell one that stops from one that goes on.
inline const char* const kSupervisorFile = "wardengine.pid";

// The supervisor's side of the file.
class SupervisorFile {
 public:
  explicit SupervisorFile(std::filesystem::path file);
  SupervisorFile(const SupervisorFile&) = delete;
  SupervisorFile& operator=(const SupervisorFile&) = delete;
  // Leaves the file empty: whoever waits for its lock has it open.
  ~SupervisorFile();

  enum class Taken { kYes, kHasAnother, kFailed };  // errno says why it failed
  // For the process that stays: the lock does not go to those that it starts. Makes the folder.
  Taken take();
  // Tells that the service is being stopped and that the lock will soon be free.
  void say_stopping();
  // Whether the file that is locked still is the one in the folder.
  bool is_there() const;

 private:
  void write(const char* word);

  std::filesystem::path file_;
  Descriptor lock_;
};

struct SupervisorOwner {
  pid_t pid;  // 0 when it cannot be seen from here, as out of a container
  bool stopping;
};

// Who has the lock; nobody also where the file cannot be read. Takes no lock.
std::optional<SupervisorOwner> find_supervisor(const std::filesystem::path& file);

// Sends SIGTERM to the process that has the lock, and to no other whatever the file says.
void ask_supervisor_to_end(const std::filesystem::path& file);

}  // namespace homewarden::os_linux
