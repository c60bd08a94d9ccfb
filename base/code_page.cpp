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

}  // namespace homewarden
