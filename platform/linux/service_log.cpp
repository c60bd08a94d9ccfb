#include "platform/linux/service_log.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <system_error>
#include <utility>

#include "platform/linux/plain_file.h"

namespace homewarden::os_linux {
namespace {

std::string local_time() {
  const time_t now = ::time(nullptr);
  struct tm parts {};
  ::localtime_r(&now, &parts);
  std::array<char, 32> text{};
  return std::string(text.data(),
                     ::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S ", &parts));
}

Descriptor open_log(const std::filesystem::path& file) {
  return open_plain(file, O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW, 0600);
}

}  // namespace

ServiceLog::ServiceLog(std::filesystem::path file) : file_(std::move(file)) {}

void ServiceLog::append(std::string_view text) {
  for (const char letter : text) {
    if (letter != '\n') line_ += letter;
    if (letter == '\n' || line_.size() >= kLongestLine) write_line();
  }
}

void ServiceLog::end_line() {
  if (!line_.empty()) write_line();
}

// The file is open for a line only: one that a person removes or renames comes anew.
void ServiceLog::write_line() {
  const std::string line = local_time() + std::exchange(line_, {}) + '\n';
  Descriptor log = open_log(file_);
  struct stat found {};
  if (::fstat(log.get(), &found) != 0) return;
  if (static_cast<std::size_t>(found.st_size) + line.size() > kRoom) {
    std::error_code ignored;
    std::filesystem::rename(file_, file_.string() + ".1", ignored);
    if (ignored) return;
    log = open_log(file_);
  }
  [[maybe_unused]] const ssize_t written = ::write(log.get(), line.data(), line.size());
}

}  // namespace homewarden::os_linux
