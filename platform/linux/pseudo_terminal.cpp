#include "platform/linux/pseudo_terminal.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/epoll.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

namespace homewarden::os_linux {

namespace {

// A program that reads its port at all does not leave more than this unread.
constexpr int kMostUnread = 64;

std::string why(const std::string& what) {
  return what + ": " + std::strerror(errno);
}

void set_raw(int fd) {
  termios settings{};
  if (tcgetattr(fd, &settings) != 0) return;
  cfmakeraw(&settings);
  cfsetspeed(&settings, B4800);
  tcsetattr(fd, TCSANOW, &settings);
}

void close_and_forget(int& fd) {
  if (fd >= 0) ::close(std::exchange(fd, -1));
}

bool is_link(const std::string& path) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

}  // namespace

PseudoTerminal::PseudoTerminal(std::string link) : link_(std::move(link)) {}

PseudoTerminal::~PseudoTerminal() {
  close();
}

std::string PseudoTerminal::open() {
  close();
  const std::string last_path = path_;
  if (!open_pair()) {
    const std::string error = why("no pseudo-terminal");
    close();
    return error;
  }
  if (path_ == last_path) {
    // Still held while the next one is opened, so that the system cannot give the same again.
    int held_master = std::exchange(master_, -1);
    int held_slave = std::exchange(slave_, -1);
    const bool opened = open_pair();
    const std::string error = opened ? "" : why("no pseudo-terminal");
    close_and_forget(held_slave);
    close_and_forget(held_master);
    if (!opened) {
      close();
      return error;
    }
  }
  watch_closing();
  std::string error = make_link();
  if (!error.empty()) close();
  return error;
}

bool PseudoTerminal::open_pair() {
  master_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) return false;
  std::array<char, 128> name{};
  if (ptsname_r(master_, name.data(), name.size()) != 0) return false;
  path_ = name.data();
  slave_ = ::open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (slave_ < 0) return false;
  set_raw(slave_);
  return true;
}

// Does without where the system has no watch left.
void PseudoTerminal::watch_closing() {
  closing_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  if (inotify_add_watch(closing_, path_.c_str(), IN_CLOSE) < 0) return;
  both_ = epoll_create1(EPOLL_CLOEXEC);
  epoll_event input{};
  input.events = EPOLLIN;
  const bool watched = epoll_ctl(both_, EPOLL_CTL_ADD, master_, &input) == 0 &&
                       epoll_ctl(both_, EPOLL_CTL_ADD, closing_, &input) == 0;
  if (!watched) close_and_forget(both_);
}

// A port of the machine forgets who had it alone when the last program closes it; the terminal does
// not, since it is held open here.
void PseudoTerminal::see_closing() {
  alignas(inotify_event) std::array<char, 1024> events{};
  bool closed = false;
  while (::read(closing_, events.data(), events.size()) > 0) closed = true;
  if (closed) ioctl(slave_, TIOCNXCL);
}

void PseudoTerminal::close() {
  if (is_open()) remove_link();
  close_and_forget(both_);
  close_and_forget(closing_);
  close_and_forget(slave_);
  close_and_forget(master_);
}

std::string PseudoTerminal::make_link() const {
  if (link_.empty()) return "";
  // Renamed over the old one: nobody ever finds the link missing while it is replaced.
  const std::string scratch = link_ + ".new";
  struct stat status {};
  if (lstat(link_.c_str(), &status) == 0 && !S_ISLNK(status.st_mode))
    return link_ + ": is there and is not a link";
  if (is_link(scratch)) unlink(scratch.c_str());
  if (symlink(path_.c_str(), scratch.c_str()) != 0) return why(scratch);
  if (std::rename(scratch.c_str(), link_.c_str()) == 0) return "";
  const std::string error = why(link_);
  unlink(scratch.c_str());
  return error;
}

void PseudoTerminal::remove_link() const {
  if (link_.empty()) return;
  std::array<char, 128> target{};
  const ssize_t length = readlink(link_.c_str(), target.data(), target.size() - 1);
  // Another terminal may have taken the link over.
  if (length > 0 && path_ == target.data()) unlink(link_.c_str());
}

void PseudoTerminal::write(std::string_view bytes) {
  if (!is_open()) return;
  int unread = 0;
  if (ioctl(slave_, FIONREAD, &unread) == 0 && unread > kMostUnread) tcflush(slave_, TCIFLUSH);
  while (!bytes.empty()) {
    const ssize_t written = ::write(master_, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

std::string PseudoTerminal::read() {
  if (is_open()) see_closing();
  std::string bytes;
  std::array<char, 256> chunk{};
  while (is_open()) {
    const ssize_t count = ::read(master_, chunk.data(), chunk.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    bytes.append(chunk.data(), static_cast<std::size_t>(count));
  }
  return bytes;
}

}  // namespace homewarden::os_linux
