#include "platform/linux/window_call_pipe.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <system_error>
#include <utility>

namespace homewarden::os_linux {
namespace {

// Never waits for the other end, and writes into nothing but a pipe.
Descriptor open_pipe(const std::filesystem::path& file, int mode) {
  Descriptor pipe(::open(file.c_str(), mode | O_NONBLOCK | O_CLOEXEC | O_NOFOLLOW));
  struct stat found {};
  if (!pipe.is_open() || ::fstat(pipe.get(), &found) != 0 || !S_ISFIFO(found.st_mode))
    return Descriptor();
  return pipe;
}

}  // namespace

WindowCallPipe::WindowCallPipe(const std::filesystem::path& folder, Watch watch)
    : file_(folder / "window.call"), watch_(std::move(watch)) {}

WindowCallPipe::~WindowCallPipe() {
  stop_listening();
}

bool WindowCallPipe::ask() {
  const Descriptor pipe = open_pipe(file_, O_WRONLY);
  const char byte = 1;
  return pipe.is_open() && ::write(pipe.get(), &byte, 1) == 1;
}

void WindowCallPipe::listen(std::function<void()> show) {
  show_ = std::move(show);
  if (pipe_.is_open()) return;
  std::error_code ignored;
  std::filesystem::remove(file_, ignored);
  if (::mkfifo(file_.c_str(), 0600) != 0) return;
  pipe_ = open_pipe(file_, O_RDWR);
  if (pipe_.is_open()) watch_(pipe_.get(), [this] { take_calls(); });
}

// The descriptor stays open for whoever watches it; without the file nobody finds its other end.
void WindowCallPipe::stop_listening() {
  show_ = nullptr;
  std::error_code ignored;
  if (pipe_.is_open()) std::filesystem::remove(file_, ignored);
}

// However many have called, the window comes once.
void WindowCallPipe::take_calls() {
  std::array<char, 64> calls;
  bool called = false;
  while (::read(pipe_.get(), calls.data(), calls.size()) > 0) called = true;
  if (called && show_) show_();
}

}  // namespace homewarden::os_linux
