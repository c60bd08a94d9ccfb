#include "base/code_page.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace homewarden {
namespace {

constexpr unsigned kFirst = 0x80;

// Bytes 80 to 9F; all others are the character of the same number.
constexpr std::array<char16_t, 32> kUpper = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool is_upper(unsigned code) {
  return code >= kFirst && code < kFirst + kUpper.size();
}

}  // namespace

char16_t character_of(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  return is_upper(code) ? kUpper[static_cast<std::size_t>(code - kFirst)] : char16_t{code};
}

std::optional<char> byte_of(char16_t character) {
  const auto upper = std::find(kUpper.begin(), kUpper.end(), character);
  if (upper != kUpper.end())
    return static_cast<char>(kFirst + std::distance(kUpper.begin(), upper));
  if (character <= 0xFF && !is_upper(character)) return static_cast<char>(character);
  return std::nullopt;
}

std::string from_utf8(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size();) {
    const unsigned first = static_cast<unsigned char>(text[i]);
    int left = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
    char32_t code = left == 0 ? first : first & (0x3FU >> left);
    const bool begins = first < kFirst || left > 0;
    std::size_t end = i + 1;
    for (; left > 0 && end < text.size() && (text[end] & '\xC0') == '\x80'; --left)
      code = code << 6U | (static_cast<unsigned char>(text[end++]) & 0x3FU);
    if (!begins || left > 0) {
      bytes += text[i++];
      continue;
    }
    bytes += code > 0xFFFF ? '?' : byte_of(static_cast<char16_t>(code)).value_or('?');
    i = end;
  }
  return bytes;
}

std::string to_utf8(std::string_view text) {
  std::string utf8;
  for (const char byte : text) {
    const unsigned code = character_of(byte);
    if (code < kFirst) {
      utf8 += byte;
    } else if (code < 0x800) {
      utf8 += static_cast<char>(0xC0U | code >> 6U);
      utf8 += static_cast<char>(0x80U | (code & 0x3FU));
    } else {
      utf8 += static_cast<char>(0xE0U | code >> 12U);
      utf8 += static_cast<char>(0x80U | (code >> 6U & 0x3FU));
      utf8 += static_cast<char>(0x80U | (code & 0x3FU));
    }
  }
  return utf8;
}

}  // namespace homewarden
