#include "platform/linux/installed_files.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/linux/descriptor.h"
#include "platform/linux/existing_name.h"
#include "platform/linux/posix_files.h"

namespace homewarden::os_linux {
namespace {

namespace fs = std::filesystem;

// FNV-1a of 64 bits as 16 digits. Nobody gains anything by forging it.
std::string checksum(std::string_view content) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char byte : content) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
  char text[17];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
  return text;
}

// Path below the folder -> checksum of what was installed there.
using Sums = std::map<std::string, std::string>;

Sums parse_sums(const std::string& text) {
  Sums sums;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    const auto blank = line.find(' ');
    if (blank != std::string::npos) sums[line.substr(blank + 1)] = line.substr(0, blank);
  }
  return sums;
}

std::string to_text(const Sums& sums) {
  std::string text;
  for (const auto& [path, sum] : sums) text.append(sum).append(" ").append(path).append("\n");
  return text;
}

// The content is on the disk before it has the name. The name itself need not be: a file that is
// missing after a power cut is brought again.
bool replace(const fs::path& file, const std::string& content) {
  fs::path beside = file;
  beside += ".new";
  std::error_code error;
  bool written = (std::ofstream(beside, std::ios::binary) << content).flush().good();
  const Descriptor descriptor(::open(beside.c_str(), O_RDONLY | O_CLOEXEC));
  written = written && descriptor.is_open() && ::fsync(descriptor.get()) == 0;
  if (written) fs::rename(beside, file, error);
  if (written && !error) return true;
  fs::remove(beside, error);
  return false;
}

// The checksum of a file that the person may have changed; "" when it is not to be touched.
std::string sum_of_own(PosixFiles& files, const fs::path& file) {
  std::error_code error;
  if (fs::is_symlink(file, error)) return "";
  const auto content = files.read(file);
  return content ? checksum(*content) : "";
}

void bring(PosixFiles& files, const fs::path& source, const fs::path& file, std::string& sum) {
  const auto content = files.read(source);
  if (!content) return;
  const std::string now = checksum(*content);
  if (is_taken(file)) {
    if (now == sum) return;
    const std::string own = sum_of_own(files, file);
    if (own.empty() || (own != now && own != sum)) return;
    if (own == now) {
      sum = now;
      return;
    }
  }
  std::error_code ignored;
  fs::create_directories(file.parent_path(), ignored);
  if (replace(file, *content)) sum = now;
}

}  // namespace

void bring_installed_files(const fs::path& installed, const fs::path& folder) {
  std::error_code error;
  if (fs::equivalent(installed, folder, error)) return;
  PosixFiles files;
  const fs::path record = folder / "installed.sums";
  const std::string known = files.read(record).value_or("");
  Sums sums = parse_sums(known);
  for (fs::recursive_directory_iterator entry(installed, error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code unknown;
    if (!entry->is_regular_file(unknown)) continue;
    const fs::path path = entry->path().lexically_relative(installed);
    std::string sum = sums[path.generic_string()];
    bring(files, entry->path(), existing_name(folder / path), sum);
    sums[path.generic_string()] = sum;
  }
  std::erase_if(sums, [](const auto& entry) { return entry.second.empty(); });
  const std::string text = to_text(sums);
  if (text != known) replace(record, text);
}

}  // namespace homewarden::os_linux
