#include "app/common/end_signals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <utility>

namespace homewarden {
namespace {

int pipe_ends[2] = {-1, -1};

// A handler may do next to nothing: it hands the signal to the loop through a pipe.
void handle(int number) {
  const char byte = 1;
  [[maybe_unused]] const auto written = write(pipe_ends[1], &byte, 1);
  signal(number, SIG_DFL);
}

}  // namespace

void on_end_signal(qt::QtLoop& loop, std::function<void()> function) {
  if (pipe2(pipe_ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
  loop.watch_readable(pipe_ends[0], [function = std::move(function)] {
    char byte = 0;
    while (read(pipe_ends[0], &byte, 1) == 1) function();
  });
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) signal(number, handle);
}

}  // namespace homewarden
