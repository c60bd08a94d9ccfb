#include "platform/linux/linux_web_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <utility>

#include "platform/linux/existing_name.h"
#include "platform/linux/posix_files.h"

namespace homewarden::os_linux {
namespace {

constexpr auto kPasswords = "htaccess.txt";
constexpr auto kKey = "htaccess.key";  // safe_path() keeps what begins like it from being served

// Folder by folder, so that no link is followed at any step.
Descriptor open_inside(Descriptor folder, std::string_view name) {
  for (std::size_t slash = name.find('/'); slash != std::string_view::npos;
       slash = name.find('/')) {
    const std::string step(name.substr(0, slash));
    folder = Descriptor(
        ::openat(folder.get(), step.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    name.remove_prefix(slash + 1);
  }
  // Not blocking: a pipe of this name must not hold up the program.
  return Descriptor(::openat(folder.get(), std::string(name).c_str(),
                             O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

bool same_file(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}  // namespace

LinuxWebFolder::LinuxWebFolder(std::filesystem::path folder)
    : folder_(std::move(folder)), passwords_(existing_name(folder_ / kPasswords)) {}

std::optional<OpenFile> LinuxWebFolder::open(const std::string& name) {
  if (name.empty()) return std::nullopt;
  Descriptor folder(::open(folder_.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (!folder.is_open()) return std::nullopt;
  std::array<struct stat, 2> passwords{};
  const bool exact = ::fstatat(folder.get(), kPasswords, passwords.data(), 0) == 0;
  const bool other = ::stat(passwords_.c_str(), &passwords[1]) == 0;

  Descriptor file = open_inside(std::move(folder), name);
  struct stat info {};
  if (!file.is_open() || ::fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode) ||
      (exact && same_file(info, passwords[0])) || (other && same_file(info, passwords[1])))
    return std::nullopt;
  const std::int64_t modified =
      std::int64_t{info.st_mtim.tv_sec} * 1'000'000'000 + info.st_mtim.tv_nsec;
  return OpenFile{handle_of(std::move(file)), info.st_ino, static_cast<std::uint64_t>(info.st_size),
                  modified};
}

std::string LinuxWebFolder::read(const OpenFile& file, std::size_t most) {
  std::string content(std::min<std::size_t>(file.size, most), '\0');
  std::size_t size = 0;
  while (size < content.size()) {
    const ssize_t got = ::pread(file.file.get(), content.data() + size, content.size() - size,
                                static_cast<off_t>(size));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return "";
    if (got == 0) break;
    size += static_cast<std::size_t>(got);
  }
  content.resize(size);
  return content;
}

std::string LinuxWebFolder::passwords() {
  return PosixFiles().read(passwords_).value_or("");
}

std::string LinuxWebFolder::key() {
  return PosixFiles().read(folder_ / kKey).value_or("");
}

void LinuxWebFolder::keep_key(const std::string& key) {
  PosixFiles().write_secret(folder_ / kKey, key);
}

Handle handle_of(Descriptor descriptor) {
  return {descriptor.release(), [](int number) { ::close(number); }};
}

}  // namespace homewarden::os_linux
