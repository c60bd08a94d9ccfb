#include "platform/linux/poller.h"

#include <poll.h>
#include <signal.h>
#include <sys/signalfd.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace homewarden::os_linux {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

namespace {

nanoseconds exact_uptime() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return std::chrono::seconds(now.tv_sec) + nanoseconds(now.tv_nsec);
}

sigset_t end_signals() {
  sigset_t set;
  sigemptyset(&set);
  for (const int signal : {SIGINT, SIGTERM}) sigaddset(&set, signal);
  // nohup has it ignored, so that the program outlives its terminal.
  struct sigaction hang_up {};
  sigaction(SIGHUP, nullptr, &hang_up);
  if (hang_up.sa_handler != SIG_IGN) sigaddset(&set, SIGHUP);
  return set;
}

}  // namespace

milliseconds uptime() {
  return std::chrono::floor<milliseconds>(exact_uptime());
}

std::vector<bool> wait_readable(const std::vector<int>& fds, std::optional<milliseconds> until) {
  std::vector<pollfd> polled;
  for (const int fd : fds) polled.push_back({fd, POLLIN, 0});
  timespec limit{};
  if (until) {
    const nanoseconds left = std::max(nanoseconds(*until) - exact_uptime(), nanoseconds(0));
    const auto seconds = std::chrono::floor<std::chrono::seconds>(left);
    limit.tv_sec = static_cast<time_t>(seconds.count());
    limit.tv_nsec = static_cast<long>((left - seconds).count());
  }
  ppoll(polled.data(), polled.size(), until ? &limit : nullptr, nullptr);
  std::vector<bool> ready;
  for (const auto& entry : polled) ready.push_back(entry.revents != 0);
  return ready;
}

std::optional<std::string> read_some(int fd) {
  std::array<char, 1024> chunk{};
  const ssize_t count = ::read(fd, chunk.data(), chunk.size());
  if (count > 0) return std::string(chunk.data(), static_cast<std::size_t>(count));
  if (count < 0 && (errno == EINTR || errno == EAGAIN)) return "";
  return std::nullopt;
}

EndSignals::EndSignals() : fd_(-1) {
  const sigset_t set = end_signals();
  sigprocmask(SIG_BLOCK, &set, nullptr);
  fd_ = signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
  signal(SIGPIPE, SIG_IGN);
}

EndSignals::~EndSignals() {
  // A signal that is still pending would end the program the moment it is let through.
  signalfd_siginfo taken{};
  while (fd_ >= 0 && ::read(fd_, &taken, sizeof taken) > 0) {
  }
  if (fd_ >= 0) ::close(fd_);
  const sigset_t set = end_signals();
  sigprocmask(SIG_UNBLOCK, &set, nullptr);
}

}  // namespace homewarden::os_linux
