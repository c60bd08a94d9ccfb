#include "platform/http/document_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>

#include <array>
#include <cstdio>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "platform/linux/existing_name.h"
#include "platform/linux/posix_files.h"

namespace homewarden {
namespace {

constexpr auto kPasswords = "htaccess.txt";
constexpr auto kPageType = "text/html; charset=windows-1252";

constexpr std::array<std::pair<std::string_view, const char*>, 13> kTypes{{
    {".gif", "image/gif"},
    {".png", "image/png"},
    {".jpg", "image/jpeg"},
    {".jpeg", "image/jpeg"},
    {".svg", "image/svg+xml"},
    {".webp", "image/webp"},
    {".ico", "image/x-icon"},
    {".css", "text/css; charset=utf-8"},
    {".js", "text/javascript; charset=utf-8"},
    {".txt", "text/plain; charset=windows-1252"},
    {".html", kPageType},
    {".htm", kPageType},
    {".webmanifest", "application/manifest+json"},
}};

// By hand: the names of the days and months must not follow the locale.
std::string http_date(time_t seconds) {
  constexpr std::array kDays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  constexpr std::array kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                               "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  tm parts{};
  gmtime_r(&seconds, &parts);
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%s, %02d %s %d %02d:%02d:%02d GMT",
                kDays[static_cast<std::size_t>(parts.tm_wday)], parts.tm_mday,
                kMonths[static_cast<std::size_t>(parts.tm_mon)], parts.tm_year + 1900,
                parts.tm_hour, parts.tm_min, parts.tm_sec);
  return text.data();
}

std::string tag_of(const struct stat& info) {
  std::array<char, 80> text{};
  std::snprintf(text.data(), text.size(), "\"%llx-%lx.%lx-%llx\"",
                static_cast<unsigned long long>(info.st_ino),
                static_cast<unsigned long>(info.st_mtim.tv_sec),
                static_cast<unsigned long>(info.st_mtim.tv_nsec),
                static_cast<unsigned long long>(info.st_size));
  return text.data();
}

// Folder by folder, so that no link is followed at any step.
Descriptor open_inside(Descriptor folder, std::string_view page) {
  for (std::size_t slash = page.find('/'); slash != std::string_view::npos;
       slash = page.find('/')) {
    const std::string name(page.substr(0, slash));
    folder = Descriptor(
        ::openat(folder.get(), name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    page.remove_prefix(slash + 1);
  }
  // Not blocking: a pipe of this name must not hold up the program.
  return Descriptor(::openat(folder.get(), std::string(page).c_str(),
                             O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

bool same_file(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}  // namespace

std::string media_type(const std::string& page) {
  const std::string name = to_lower(page);
  for (const auto& [end, type] : kTypes)
    if (name.ends_with(end)) return type;
  return "application/octet-stream";
}

DocumentFolder::DocumentFolder(std::filesystem::path folder)
    : folder_(std::move(folder)), passwords_(existing_name(folder_ / kPasswords)) {}

std::optional<Document> DocumentFolder::open(const std::string& page) const {
  if (page.empty()) return std::nullopt;
  Descriptor folder(::open(folder_.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (!folder.is_open()) return std::nullopt;
  std::array<struct stat, 2> passwords{};
  const bool exact = ::fstatat(folder.get(), kPasswords, passwords.data(), 0) == 0;
  const bool other = ::stat(passwords_.c_str(), &passwords[1]) == 0;

  Document document;
  document.file = open_inside(std::move(folder), page);
  struct stat info {};
  if (!document.file.is_open() || ::fstat(document.file.get(), &info) != 0 ||
      !S_ISREG(info.st_mode) || (exact && same_file(info, passwords[0])) ||
      (other && same_file(info, passwords[1])))
    return std::nullopt;
  document.size = static_cast<std::uint64_t>(info.st_size);
  document.type = media_type(page);
  document.last_modified = http_date(info.st_mtim.tv_sec);
  document.tag = tag_of(info);
  document.is_page = document.type == kPageType;
  return document;
}

std::string DocumentFolder::passwords() const {
  return PosixFiles().read(passwords_).value_or("");
}

}  // namespace homewarden
