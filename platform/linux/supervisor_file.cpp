#include "platform/linux/supervisor_file.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/linux/pidfd.h"
#include "platform/linux/plain_file.h"

namespace homewarden::os_linux {
namespace {

const char* const kStopping = "stopping";

// Of the process, not of the open file: this kind alone tells who has it.
struct flock whole_file() {
  struct flock lock = {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  return lock;
}

std::optional<pid_t> lock_owner(int descriptor) {
  struct flock lock = whole_file();
  if (::fcntl(descriptor, F_GETLK, &lock) != 0 || lock.l_type == F_UNLCK) return std::nullopt;
  return lock.l_pid > 0 ? lock.l_pid : 0;
}

Descriptor open_to_read(const std::filesystem::path& file) {
  return open_plain(file, O_RDONLY | O_NOFOLLOW);
}

}  // namespace

SupervisorFile::SupervisorFile(std::filesystem::path file) : file_(std::move(file)) {}

SupervisorFile::~SupervisorFile() {
  if (lock_.is_open()) [[maybe_unused]]
    const int ignored = ::ftruncate(lock_.get(), 0);
}

SupervisorFile::Taken SupervisorFile::take() {
  std::error_code ignored;
  std::filesystem::create_directories(file_.parent_path(), ignored);
  // What a link leads to would be written over.
  Descriptor descriptor = open_plain(file_, O_RDWR | O_CREAT | O_NOFOLLOW, 0666);
  if (!descriptor.is_open()) return Taken::kFailed;
  struct flock lock = whole_file();
  if (::fcntl(descriptor.get(), F_SETLK, &lock) != 0)
    return errno == EAGAIN || errno == EACCES ? Taken::kHasAnother : Taken::kFailed;
  lock_ = std::move(descriptor);
  write("supervising");
  return Taken::kYes;
}

void SupervisorFile::say_stopping() {
  write(kStopping);
}

bool SupervisorFile::is_there() const {
  struct stat locked {};
  struct stat found {};
  return ::fstat(lock_.get(), &locked) == 0 && ::stat(file_.c_str(), &found) == 0 &&
         locked.st_ino == found.st_ino && locked.st_dev == found.st_dev;
}

// In one piece, and of one length, so that no reader finds half of the one and half of the other.
void SupervisorFile::write(const char* word) {
  std::string line = std::to_string(::getpid()) + " " + word;
  line.resize(31, ' ');
  line += '\n';
  [[maybe_unused]] const ssize_t ignored = ::pwrite(lock_.get(), line.data(), line.size(), 0);
}

std::optional<SupervisorOwner> find_supervisor(const std::filesystem::path& file) {
  const Descriptor descriptor = open_to_read(file);
  if (!descriptor.is_open()) return std::nullopt;
  const auto owner = lock_owner(descriptor.get());
  if (!owner) return std::nullopt;
  std::array<char, 64> text{};
  const ssize_t size = ::pread(descriptor.get(), text.data(), text.size(), 0);
  const std::string_view line(text.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
  return SupervisorOwner{*owner, line.find(kStopping) != std::string_view::npos};
}

// A number may belong to another process by the time it is used; what a pidfd refers to does not
// change, and is the supervisor when that still has the lock.
void ask_supervisor_to_end(const std::filesystem::path& file) {
  const Descriptor descriptor = open_to_read(file);
  if (!descriptor.is_open()) return;
  const pid_t owner = lock_owner(descriptor.get()).value_or(0);
  if (owner == 0) return;
  const Descriptor process = open_process(owner);
  if (process.is_open() && lock_owner(descriptor.get()) == owner) send_signal(process, SIGTERM);
}

}  // namespace homewarden::os_linux
