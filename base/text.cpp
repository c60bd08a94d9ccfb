#include "base/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <system_error>

#include "base/code_page.h"

namespace homewarden {
namespace {

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

// The other way around; letters that to_lower does not change have no other case.
char to_upper(char letter) {
  const auto code = static_cast<unsigned char>(letter);
  for (const unsigned distance : {0x20U, 0x10U}) {
    if (code < distance) continue;
    const char candidate = static_cast<char>(code - distance);
    if (candidate != letter && to_lower(candidate) == letter) return candidate;
  }
  return code == 0xFF ? static_cast<char>(0x9F) : letter;
}

// Windows-1252 letters beyond ASCII in the order of the code, as the plain letter that each is
// without its accent; "." for what is no letter.
constexpr std::string_view kPlainLetters =
    "..........s.o.z...........s.o.zy"   // 80-9F
    "................................"   // A0-BF
    "aaaaaaaceeeeiiiidnooooo.ouuuuyts"   // C0-DF
    "aaaaaaaceeeeiiiidnooooo.ouuuuyty";  // E0-FF

bool same_letter(char a, char b) {
  return to_lower(a) == to_lower(b);
}

}  // namespace

char to_lower(char letter) {
  const auto code = static_cast<unsigned char>(letter);
  const bool plain = code >= 'A' && code <= 'Z';
  const bool accented = code >= 0xC0 && code <= 0xDE && code != 0xD7;
  if (plain || accented) return static_cast<char>(code + 0x20);
  if (code == 0x8A || code == 0x8C || code == 0x8E) return static_cast<char>(code + 0x10);
  if (code == 0x9F) return static_cast<char>(0xFF);
  return letter;
}

char plain_letter(char letter) {
  const auto code = static_cast<unsigned char>(letter);
  if (code < 0x80) return to_lower(letter);
  const char plain = kPlainLetters[static_cast<std::size_t>(code - 0x80)];
  return plain == '.' ? letter : plain;
}

std::string to_lower(std::string_view text) {
  std::string result(text);
  for (char& letter : result) letter = to_lower(letter);
  return result;
}

std::size_t find_ignoring_case(std::string_view text, std::string_view part) {
  if (part.empty()) return 0;
  // Every line of every list is searched: find the first letter quickly, whose other case is at
  // most one other byte.
  const char lower = to_lower(part.front());
  const char upper = to_upper(part.front());
  for (std::size_t at = 0; at + part.size() <= text.size(); ++at) {
    if (text[at] != lower && text[at] != upper) continue;
    if (std::equal(part.begin() + 1, part.end(), text.begin() + static_cast<long>(at) + 1,
                   same_letter))
      return at;
  }
  return std::string_view::npos;
}

bool contains_ignoring_case(std::string_view text, std::string_view part) {
  return find_ignoring_case(text, part) != std::string_view::npos;
}

bool equals_ignoring_case(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), same_letter);
}

std::string_view trim_blanks(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string without_blanks(std::string_view text) {
  std::string result(text);
  std::erase(result, ' ');
  return result;
}

std::string on_one_line(std::string_view text, std::size_t most) {
  std::string line(text.substr(0, most));
  // In the upper half, too: bytes without a character of their own.
  for (char& letter : line) {
    const char16_t character = character_of(letter);
    if (character < ' ' || (character >= 0x7f && character < 0xa0)) letter = ' ';
  }
  return text.size() > most ? line + "..." : line;
}

std::string replace_all(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  if (from.empty()) return std::string(text);
  for (;;) {
    const auto found = text.find(from);
    result += text.substr(0, found);
    if (found == std::string_view::npos) return result;
    result += to;
    text.remove_prefix(found + from.size());
  }
}

std::string replace_all_ignoring_case(std::string_view text, std::string_view from,
                                      std::string_view to) {
  std::string result;
  if (from.empty()) return std::string(text);
  for (;;) {
    const auto found = find_ignoring_case(text, from);
    result += text.substr(0, found);
    if (found == std::string_view::npos) return result;
    result += to;
    text.remove_prefix(found + from.size());
  }
}

double leading_number(std::string_view text) {
  text = trim_blanks(text);
  const bool signed_plus = !text.empty() && text.front() == '+';
  if (signed_plus) text.remove_prefix(1);
  // from_chars would also read "inf" and "nan".
  const auto first = text.find_first_not_of(signed_plus ? "." : "-.");
  if (first == std::string_view::npos || !is_digit(text[first])) return 0;
  double number = 0;
  const auto result =
      std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
  return result.ec == std::errc() ? number : 0;
}

std::optional<int> to_integer16(std::string_view text) {
  text = trim_blanks(text);
  if (text.size() > 1 && text.front() == '+' && is_digit(text[1])) text.remove_prefix(1);
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  if (number < std::numeric_limits<std::int16_t>::min() ||
      number > std::numeric_limits<std::int16_t>::max())
    return std::nullopt;
  return number;
}

int hex_digit(char letter) {
  if (is_digit(letter)) return letter - '0';
  const char lower = to_lower(letter);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

long round_to_even(double number) {
  const double below = std::floor(number);
  const double rest = number - below;
  const auto whole = static_cast<long>(below);
  if (rest < 0.5) return whole;
  if (rest > 0.5) return whole + 1;
  return whole % 2 == 0 ? whole : whole + 1;
}

std::string text_of_single(float number) {
  char digits[64];
  const auto end =
      std::to_chars(std::begin(digits), std::end(digits), number, std::chars_format::fixed);
  return std::string(std::begin(digits), end.ptr);
}

std::string two_digits(int number) {
  const std::string digits = std::to_string(number);
  return digits.size() < 2 ? "0" + digits : digits;
}

std::string percent_decoded(std::string_view encoded) {
  std::string text;
  for (std::size_t i = 0; i < encoded.size(); ++i) {
    const int high = encoded[i] == '%' && i + 2 < encoded.size() ? hex_digit(encoded[i + 1]) : -1;
    const int low = high >= 0 ? hex_digit(encoded[i + 2]) : -1;
    if (low < 0) {
      text += encoded[i];
      continue;
    }
    text += static_cast<char>(high * 16 + low);
    i += 2;
  }
  return text;
}

}  // namespace homewarden
