#include "platform/linux/line_output.h"

#include <fcntl.h>
#include <limits.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace homewarden::os_linux {

void prepare_standard_streams() {
  signal(SIGPIPE, SIG_IGN);
  for (int number = STDIN_FILENO; number <= STDERR_FILENO; ++number) {
    if (fcntl(number, F_GETFD) != -1 || errno != EBADF) continue;
    // The lowest number that is free is this one.
    [[maybe_unused]] const int opened = open("/dev/null", O_RDWR);
  }
}

// O_NONBLOCK belongs to what is open, not to the number: set on a terminal or pipe it would meet
// every other process that shares it. Opened anew, it meets this one alone.
LineOutput::LineOutput(int descriptor) : descriptor_(descriptor) {
  struct stat about {};
  if (fstat(descriptor, &about) != 0) {
    reader_gone_ = true;
  } else if (S_ISSOCK(about.st_mode)) {
    kind_ = Kind::kSocket;
  } else if (!S_ISREG(about.st_mode)) {
    const std::string name = "/proc/self/fd/" + std::to_string(descriptor);
    own_ = Descriptor(open(name.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    kind_ = own_.is_open() ? Kind::kOwn : Kind::kShared;
  }
}

void LineOutput::print(std::string_view text) {
  if (reader_gone_) return;
  const bool had_nothing = go_on();
  if (left_out_ > 0 || (!had_nothing && kept_.size() + text.size() >= kRoom)) {
    left_out_ += 1 + static_cast<std::size_t>(std::ranges::count(text, '\n'));
    return;
  }
  kept_.append(text) += '\n';
  if (!go_on() && had_nothing && on_kept) on_kept();
}

bool LineOutput::go_on() {
  for (;;) {
    if (kept_.empty() && left_out_ > 0) {
      kept_ =
          "(" + std::to_string(left_out_) + (left_out_ == 1 ? " line" : " lines") + " left out)\n";
      left_out_ = 0;
    }
    if (kept_.empty()) return true;
    const std::size_t written = write_some(kept_);
    if (written == 0) return false;
    kept_.erase(0, written);
  }
}

// How many bytes are done with, without waiting: written, or for a reader that has gone.
std::size_t LineOutput::write_some(std::string_view bytes) {
  ssize_t written = -1;
  do {
    if (kind_ == Kind::kSocket) {
      written = send(descriptor_, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    } else if (kind_ == Kind::kShared) {
      // A pipe that can be written at all takes as much as this.
      pollfd ready{descriptor_, POLLOUT, 0};
      if (poll(&ready, 1, 0) <= 0) return 0;
      written = write(descriptor_, bytes.data(), std::min<std::size_t>(bytes.size(), PIPE_BUF));
    } else {
      written = write(own_.is_open() ? own_.get() : descriptor_, bytes.data(), bytes.size());
    }
  } while (written < 0 && errno == EINTR);
  if (written >= 0) return static_cast<std::size_t>(written);
  reader_gone_ = errno == EPIPE || errno == EIO || errno == EBADF;
  return reader_gone_ ? bytes.size() : 0;
}

}  // namespace homewarden::os_linux
