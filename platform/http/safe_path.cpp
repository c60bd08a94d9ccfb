#include "platform/http/safe_path.h"

#include "base/text.h"

namespace homewarden::http {
namespace {

constexpr std::size_t kLongest = 1024;

std::optional<std::string> percent_decoded(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      decoded.push_back(text[i]);
      continue;
    }
    if (i + 2 >= text.size()) return std::nullopt;
    const int high = hex_digit(text[i + 1]);
    const int low = hex_digit(text[i + 2]);
    if (high < 0 || low < 0) return std::nullopt;
    decoded.push_back(static_cast<char>(high * 16 + low));
    i += 2;
  }
  return decoded;
}

// Beside control characters: what separates folders, drives and streams elsewhere, what stands for
// a shortened name, and a percent sign, which is left when a path was encoded twice.
bool is_safe(char letter) {
  const auto code = static_cast<unsigned char>(letter);
  return code >= ' ' && code != 0x7f && std::string_view("\\:~%").find(letter) == std::string::npos;
}

// Not empty, not hidden, not "." or "..", no blanks or dots at the ends, which some systems drop;
// and nothing that begins like the file with the passwords, so that no copy of it is served.
bool is_safe_name(std::string_view name) {
  if (name.empty() || name.front() == '.' || name.front() == ' ') return false;
  if (name.back() == '.' || name.back() == ' ') return false;
  for (const char letter : name)
    if (!is_safe(letter)) return false;
  return !to_lower(name).starts_with("htaccess");
}

}  // namespace

std::optional<std::string> safe_path(std::string_view raw_path) {
  if (!raw_path.starts_with('/') || raw_path.size() > 3 * kLongest) return std::nullopt;
  auto path = percent_decoded(raw_path.substr(1));
  if (!path || path->size() > kLongest) return std::nullopt;
  if (path->empty()) return path;
  for (std::size_t start = 0; start <= path->size();) {
    const std::size_t end = std::min(path->find('/', start), path->size());
    if (!is_safe_name(std::string_view(*path).substr(start, end - start))) return std::nullopt;
    start = end + 1;
  }
  return path;
}

}  // namespace homewarden::http
