#include "platform/http/credentials.h"

#include "base/code_page.h"
#include "base/text.h"
#include "platform/http/keyed_hash.h"

namespace homewarden::http {
namespace {

int base64_value(char letter) {
  if (letter >= 'A' && letter <= 'Z') return letter - 'A';
  if (letter >= 'a' && letter <= 'z') return letter - 'a' + 26;
  if (letter >= '0' && letter <= '9') return letter - '0' + 52;
  if (letter == '+') return 62;
  return letter == '/' ? 63 : -1;
}

}  // namespace

std::optional<std::string> base64_decoded(std::string_view text) {
  const std::size_t padding = text.ends_with("==") ? 2U : text.ends_with('=') ? 1U : 0U;
  if (text.size() % 4 != 0) return std::nullopt;
  text.remove_suffix(padding);
  std::string decoded;
  unsigned bits = 0;
  int count = 0;
  for (const char letter : text) {
    const int value = base64_value(letter);
    if (value < 0) return std::nullopt;
    bits = (bits << 6U) | static_cast<unsigned>(value);
    count += 6;
    if (count >= 8) {
      count -= 8;
      decoded.push_back(static_cast<char>((bits >> static_cast<unsigned>(count)) & 0xffU));
    }
  }
  return decoded;
}

std::string utf8_of(std::string_view text) {
  std::string encoded;
  for (const char letter : text) {
    const unsigned code = character_of(letter);
    if (code < 0x80) {
      encoded.push_back(letter);
    } else if (code < 0x800) {
      encoded.push_back(static_cast<char>(0xc0U | (code >> 6U)));
      encoded.push_back(static_cast<char>(0x80U | (code & 0x3fU)));
    } else {
      encoded.push_back(static_cast<char>(0xe0U | (code >> 12U)));
      encoded.push_back(static_cast<char>(0x80U | ((code >> 6U) & 0x3fU)));
      encoded.push_back(static_cast<char>(0x80U | (code & 0x3fU)));
    }
  }
  return encoded;
}

Credentials::Credentials(std::string_view file_content) {
  while (!file_content.empty()) {
    const std::size_t end = std::min(file_content.find('\n'), file_content.size());
    std::string_view line = file_content.substr(0, end);
    file_content.remove_prefix(std::min(end + 1, file_content.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.find(':') == std::string_view::npos) continue;
    lines_.emplace_back(line);
    std::string encoded = utf8_of(line);
    if (encoded != line) lines_.push_back(std::move(encoded));
  }
}

bool Credentials::admit(std::string_view authorization) const {
  constexpr std::string_view kScheme = "basic ";
  if (!to_lower(authorization.substr(0, kScheme.size())).starts_with(kScheme)) return false;
  // User, colon and password are compared as one text: the first colon ends the user name in both.
  const auto given = base64_decoded(trim_blanks(authorization.substr(kScheme.size())));
  if (!given) return false;
  bool admitted = false;
  for (const auto& line : lines_)
    if (same_in_constant_time(*given, line)) admitted = true;
  return admitted;
}

}  // namespace homewarden::http
