#include "app/common/end_signals.h"

#include <fcntl.h>
#include <signal.h>
#include <time.h>
#include <unistd.h>

#include <utility>

namespace homewarden {
namespace {

// Nobody is impatient so soon: what ends all processes at once also ends the supervisor, which
// hands the signal on.
constexpr time_t kPatience = 2;  // seconds

int pipe_ends[2] = {-1, -1};
time_t asked_at = 0;

// A handler may do next to nothing: it hands the signal to the loop through a pipe.
void handle(int number) {
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  if (asked_at == 0) asked_at = now.tv_sec;
  if (now.tv_sec - asked_at > kPatience) {
    signal(number, SIG_DFL);
    raise(number);
  }
  const char byte = 1;
  [[maybe_unused]] const auto written = write(pipe_ends[1], &byte, 1);
}

}  // namespace

void on_end_signal(qt::QtLoop& loop, std::function<void()> function) {
  if (pipe2(pipe_ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
  loop.watch_readable(pipe_ends[0], [function = std::move(function)] {
    char byte = 0;
    while (read(pipe_ends[0], &byte, 1) == 1) function();
  });
  for (const int number : {SIGINT, SIGTERM}) signal(number, handle);
  // nohup has it ignored, so that the program outlives its terminal.
  if (signal(SIGHUP, handle) == SIG_IGN) signal(SIGHUP, SIG_IGN);
}

}  // namespace homewarden
