#include "platform/linux/posix_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#include "base/text.h"
#include "platform/linux/descriptor.h"
#include "platform/linux/existing_name.h"
#include "platform/linux/writer_watch.h"

namespace homewarden::os_linux {
namespace {

constexpr off_t kLargest = 64L * 1024 * 1024;
constexpr mode_t kMode = 0644;
constexpr mode_t kSecretMode = 0600;

// Changes that follow each other faster may have the same time. Far more than the longest tick.
constexpr std::int64_t kTick = 100'000'000;

// In which somebody who has emptied a file, or written half a line, may write the rest.
constexpr int kPatienceMs = 20;

std::int64_t nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

// The clock that files are stamped with.
std::int64_t file_time_now() {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME_COARSE, &now);
  return nanoseconds(now);
}

bool write_all(int descriptor, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = ::write(descriptor, content.data(), content.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// Opens a regular file for writing. Not blocking: a pipe that nobody reads must not hold up the
// program. A device or pipe of this name is not opened.
Descriptor open_to_write(const std::filesystem::path& file, int flags, struct stat& info) {
  constexpr int kAlways = O_WRONLY | O_CREAT | O_NONBLOCK | O_CLOEXEC;
  Descriptor descriptor(::open(file.c_str(), kAlways | flags, kMode));
  const bool fits =
      descriptor.is_open() && ::fstat(descriptor.get(), &info) == 0 && S_ISREG(info.st_mode);
  return fits ? std::move(descriptor) : Descriptor();
}

// A name that was made, changed or removed is on the disk only when its folder is.
bool sync_folder_of(const std::filesystem::path& file) {
  const auto folder = file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
  const Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return descriptor.is_open() && ::fsync(descriptor.get()) == 0;
}

// Whether the file is the one that is open.
bool is_open_as(int descriptor, const std::filesystem::path& file) {
  struct stat open {};
  struct stat found {};
  return ::fstat(descriptor, &open) == 0 && ::stat(file.c_str(), &found) == 0 &&
         open.st_dev == found.st_dev && open.st_ino == found.st_ino;
}

// The file that a link leads to; the link itself when it leads nowhere.
std::filesystem::path behind_links(const std::filesystem::path& file) {
  std::error_code error;
  if (!std::filesystem::is_symlink(file, error)) return file;
  auto target = std::filesystem::canonical(file, error);
  return error ? file : target;
}

}  // namespace

const std::filesystem::path& PosixFiles::find(const std::filesystem::path& file) {
  if (is_taken(file)) return file;
  const auto known = other_names_.find(file);
  if (known != other_names_.end() && is_taken(known->second)) return known->second;
  auto found = existing_name(file);
  if (found == file) return file;
  return other_names_.insert_or_assign(file, std::move(found)).first->second;
}

bool PosixFiles::exists(const std::filesystem::path& file) {
  return is_taken(find(file));
}

std::optional<std::vector<std::string>> PosixFiles::names_ending(
    const std::filesystem::path& folder, std::string_view ending) {
  std::error_code failed;
  std::vector<std::string> names;
  const std::string wanted = to_lower(ending);
  std::filesystem::directory_iterator entry(folder, failed);
  for (; !failed && entry != std::filesystem::directory_iterator(); entry.increment(failed)) {
    std::string name = entry->path().filename().string();
    std::error_code unknown;  // it may be there all the same
    const auto type = entry->status(unknown).type();
    const bool is_file = type != std::filesystem::file_type::directory &&
                         type != std::filesystem::file_type::not_found;
    if (is_file && to_lower(name).ends_with(wanted)) names.push_back(std::move(name));
  }
  if (failed) return std::nullopt;
  std::sort(names.begin(), names.end());
  return names;
}

std::optional<std::string> PosixFiles::read(const std::filesystem::path& file) {
  // Not blocking: a pipe or a device of this name must not hold up the program.
  const Descriptor descriptor(::open(find(file).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  struct stat info {};
  if (!descriptor.is_open() || ::fstat(descriptor.get(), &info) != 0 || !S_ISREG(info.st_mode) ||
      info.st_size > kLargest)
    return std::nullopt;
  std::string content(static_cast<std::size_t>(info.st_size), '\0');
  std::size_t filled = 0;
  while (filled < content.size()) {
    const ssize_t got = ::read(descriptor.get(), content.data() + filled, content.size() - filled);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return std::nullopt;
    if (got == 0) break;
    filled += static_cast<std::size_t>(got);
  }
  content.resize(filled);
  return content;
}

std::optional<std::string> PosixFiles::read_settled(const std::filesystem::path& file) {
  for (int waited = 0;; ++waited) {
    const Descriptor descriptor(::open(find(file).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    const WriterWatch watch(descriptor.get());
    auto content = read(file);
    if (!content || waited == kPatienceMs) return content;
    const bool settled = watch.can_tell() ? !watch.found_writer() : content->ends_with('\n');
    struct stat info {};
    if (settled || ::fstat(descriptor.get(), &info) != 0 ||
        file_time_now() - nanoseconds(info.st_mtim) > kTick)
      return content;
    const timespec millisecond{0, 1'000'000};
    ::nanosleep(&millisecond, nullptr);
  }
}

std::optional<FileStamp> PosixFiles::stamp(const std::filesystem::path& file) {
  struct stat info {};
  if (::stat(find(file).c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return std::nullopt;
  const FileStamp stamp{info.st_ino, static_cast<std::uint64_t>(info.st_size),
                        nanoseconds(info.st_ctim)};
  if (file_time_now() - stamp.changed < kTick) return std::nullopt;
  return stamp;
}

bool PosixFiles::write(const std::filesystem::path& file, std::string_view content) {
  struct stat info {};
  const Descriptor descriptor = open_to_write(find(file), O_TRUNC, info);
  return descriptor.is_open() && write_all(descriptor.get(), content) &&
         ::fsync(descriptor.get()) == 0 && sync_folder_of(find(file));
}

bool PosixFiles::write_secret(const std::filesystem::path& file, std::string_view content) {
  struct stat info {};
  const Descriptor descriptor = open_to_write(find(file), 0, info);
  // Before anything is in it.
  return descriptor.is_open() && ::fchmod(descriptor.get(), kSecretMode) == 0 &&
         ::ftruncate(descriptor.get(), 0) == 0 && write_all(descriptor.get(), content) &&
         ::fsync(descriptor.get()) == 0 && sync_folder_of(find(file));
}

bool PosixFiles::append(const std::filesystem::path& file, std::string_view content) {
  struct stat info {};
  const Descriptor descriptor = open_to_write(find(file), O_APPEND, info);
  if (!descriptor.is_open()) return false;
  if (write_all(descriptor.get(), content) && ::fsync(descriptor.get()) == 0)
    return info.st_size > 0 || sync_folder_of(find(file));
  // Half a line would spoil the file: back to what it was.
  [[maybe_unused]] const int cut = ::ftruncate(descriptor.get(), info.st_size);
  return false;
}

bool PosixFiles::rename(const std::filesystem::path& from, const std::filesystem::path& to) {
  const auto target = behind_links(find(to));
  if (::rename(find(from).c_str(), target.c_str()) == 0) return sync_folder_of(target);
  if (errno != EXDEV) return false;
  // A link to a file on another disk: the new one has to get there first.
  const auto content = read(from);
  auto beside = target;
  beside += ".new";
  if (content && write(beside, *content) && ::rename(beside.c_str(), target.c_str()) == 0)
    return sync_folder_of(target) && remove(from);
  ::unlink(beside.c_str());
  return false;
}

Exchange PosixFiles::exchange(const std::filesystem::path& from, const std::filesystem::path& to,
                              std::string_view known) {
  const auto source = find(from);
  const auto target = behind_links(find(to));
  const Descriptor descriptor(::open(target.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  const WriterWatch watch(descriptor.get());
  if (watch.somebody_writes() || read(target) != known) return Exchange::kChanged;
  const auto change_places = [&] {
    return ::renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str(), RENAME_EXCHANGE) == 0;
  };
  if (!change_places()) return Exchange::kCannot;
  if (is_open_as(descriptor.get(), source) && !watch.somebody_writes() &&
      (watch.can_tell() || read(source) == known))
    return Exchange::kDone;
  // Another file took its place this moment, or somebody opened it to write.
  change_places();
  return Exchange::kChanged;
}

bool PosixFiles::remove(const std::filesystem::path& file) {
  const auto& found = find(file);
  if (::unlink(found.c_str()) != 0) return errno == ENOENT;
  return sync_folder_of(found);
}

}  // namespace homewarden::os_linux
