#include "platform/linux/supervisor.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace homewarden::os_linux {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr milliseconds kLook{5000};     // how often it is looked whether the house is still there
constexpr milliseconds kTurnLook{200};  // and whether another supervisor has ended
constexpr seconds kSecondLook{1};       // one that goes on now may be about to end
constexpr seconds kTurnPatience{10};    // beyond its stop limit
constexpr seconds kKillPatience{10};    // for a process that is dead already

}  // namespace

Supervisor::Supervisor(const std::filesystem::path& folder, ServiceCommand command,
                       seconds stop_limit)
    : path_(folder / kSupervisorFile),
      command_(std::move(command)),
      stop_limit_(stop_limit),
      file_(path_),
      log_(folder / kServiceLog) {}

int Supervisor::run() {
  // Neither a disk that is to be unmounted nor another manager's service is held.
  [[maybe_unused]] const int ignored = ::chdir("/");
  ::unsetenv("NOTIFY_SOCKET");
  const SupervisorFile::Taken taken = take_place();
  if (taken == SupervisorFile::Taken::kFailed) {
    const std::string text = path_.string() + ": " + std::strerror(errno);
    print("The service cannot be supervised: " + text);
    std::fprintf(stderr, "wardengine: %s\n", text.c_str());
    return 1;
  }
  if (taken == SupervisorFile::Taken::kHasAnother) return 0;
  while (is_wanted()) {
    const milliseconds start = uptime();
    if (serve()) break;
    const seconds length = pauses_.next(uptime() - start);
    print("It is started again in " + std::to_string(length.count()) + " s");
    pause(length);
  }
  return 0;
}

SupervisorFile::Taken Supervisor::take_place() {
  const milliseconds start = uptime();
  const milliseconds end = start + stop_limit_ + kTurnPatience;
  for (;;) {
    const SupervisorFile::Taken taken = file_.take();
    if (taken != SupervisorFile::Taken::kHasAnother) return taken;
    const auto owner = find_supervisor(path_);
    const bool stays = owner && !owner->stopping && uptime() >= start + kSecondLook;
    if (stays || asked_ || uptime() >= end) return taken;
    asked_ = wait_readable({signals_.fd()}, uptime() + kTurnLook)[0];
  }
}

// True when it has ended for good.
bool Supervisor::serve() {
  SupervisedChild child(command_);
  if (!child.has_started()) {
    print(std::string("The service cannot be started: ") + std::strerror(errno));
    return false;
  }
  bool ended = false;
  while (!ended && is_wanted()) ended = wait(child, uptime() + kLook);
  if (!ended) stop(child);
  take_output(child);
  const SupervisedChild::End end = child.end();
  if (!end.well) print("The service ended with " + end.text);
  return end.well || !ended;
}

void Supervisor::stop(SupervisedChild& child) {
  asked_ = true;
  file_.say_stopping();
  child.send(SIGTERM);
  const milliseconds limit = uptime() + stop_limit_;
  bool ended = false;
  while (!ended && uptime() < limit) ended = wait(child, limit);
  if (ended) return;
  print("The service has not ended in " + std::to_string(stop_limit_.count()) + " s and is killed");
  child.send(SIGKILL);
  const milliseconds killed = uptime() + kKillPatience;
  while (!ended && uptime() < killed) ended = wait(child, killed);
}

// True when the service has ended.
bool Supervisor::wait(SupervisedChild& child, milliseconds until) {
  const auto ready =
      wait_readable({asked_ ? -1 : signals_.fd(), child.process(), child.output()}, until);
  asked_ = asked_ || ready[0];
  if (ready[2]) take_output(child);
  return ready[1];
}

// No more at once than a pipe holds: one that prints without end is to be stopped all the same.
void Supervisor::take_output(SupervisedChild& child) {
  for (int turns = 64; turns > 0 && child.output() >= 0; --turns) {
    const auto text = read_some(child.output());
    if (!text) child.close_output();
    if (!text || text->empty()) return;
    log_.append(*text);
  }
}

void Supervisor::pause(milliseconds length) {
  const milliseconds end = uptime() + length;
  while (is_wanted() && uptime() < end)
    asked_ = wait_readable({signals_.fd()}, std::min(end, uptime() + kLook))[0];
}

void Supervisor::print(const std::string& text) {
  log_.end_line();
  log_.append("Supervisor: " + text + "\n");
}

}  // namespace homewarden::os_linux
