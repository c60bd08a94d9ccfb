#pragma once

#include <string>

#include "base/task.h"
#include "platform/event_loop.h"
#include "platform/registry.h"
#include "platform/service_control.h"

namespace homewarden {

// The routines every part of the program uses: machine-wide values, the background service,
// waiting. None of them reports a failure other than by its result.
class Module1 {
 public:
  Module1(EventLoop& loop, Registry& registry, ServiceControl& services,
          std::string windows_folder);

  // The text up to its first zero character. The default when the value is missing, unreadable or
  // no string.
  std::string regread(RegistryRoot root, const std::string& key, const std::string& name,
                      const std::string& default_text = {});
  // Recorded at once and on the disk a little later (platform/registry.h); a disk that cannot be
  // written is told by StoreNotices.
  void regwrite(RegistryRoot root, const std::string& key, const std::string& name,
                const std::string& text);
  void regdelete(RegistryRoot root, const std::string& key, const std::string& name);

  // Waits until what is recorded now survives a kill: a moment, as a rule, and five seconds at
  // most. False, sooner, when it is known that the disk cannot be written: then it is tried on.
  Task<bool> stored(RegistryRoot root);
  // False while it is known that the disk takes nothing: what is recorded is in memory only.
  bool is_writable(RegistryRoot root) {
    return registry_.state(root).trouble == StoreTrouble::kNone;
  }
  // False as long as nothing is answered but defaults, since the disk cannot be read.
  bool is_known(RegistryRoot root) { return registry_.state(root).is_read; }
  // Waits until it is known what the disk holds, which another program's lock can prevent: 30
  // seconds at most. False when it is not known then, or cannot be for another reason.
  Task<bool> known(RegistryRoot root);

  // "Stopped", "Start Pending", "Stop Pending", "Running", "Coninue Pending", "Pause Pending" or
  // "Paused"; "" when the service is not installed or cannot be asked.
  std::string servicestatus(const std::string& machine, const std::string& service);
  // Ask for it and return at once; servicestatus() tells what came of it. "" is this machine.
  void servicestart(const std::string& machine, const std::string& service);
  void servicestop(const std::string& machine, const std::string& service);

  // Waits 0 to 255 seconds while everything else goes on. The start is taken rounded to a whole
  // second of the wall clock, so a pause lasts up to half a second less or more than asked; what
  // the wall clock does during the pause does not matter.
  Task<void> pause(int seconds);

  // The folder with the service tools, at most 145 characters.
  std::string windowsdir() const;

 private:
  EventLoop& loop_;
  Registry& registry_;
  ServiceControl& services_;
  std::string windows_folder_;
};

}  // namespace homewarden
