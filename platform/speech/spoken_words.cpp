#include "platform/speech/spoken_words.h"

#include <algorithm>
#include <iterator>

#include "base/code_page.h"
#include "base/text.h"
#include "platform/speech/flite_english.h"

namespace homewarden::speech {
namespace {

// Nobody says more, and Flite writes beyond its buffer at a row of 300 points.
constexpr std::size_t kMostLetters = 200;

// The letters of the code page from 0xC0 on, in ASCII.
constexpr const char* kLetters[] = {
    "a", "a", "a", "a", "a", "a", "ae", "c", "e", "e", "e", "e", "i", "i", "i",  "i",
    "d", "n", "o", "o", "o", "o", "o",  " ", "o", "u", "u", "u", "u", "y", "th", "ss",
    "a", "a", "a", "a", "a", "a", "ae", "c", "e", "e", "e", "e", "i", "i", "i",  "i",
    "d", "n", "o", "o", "o", "o", "o",  " ", "o", "u", "u", "u", "u", "y", "th", "y"};
static_assert(std::size(kLetters) == 0x100 - 0xC0);

std::string in_ascii(char byte) {
  const char16_t character = character_of(byte);
  switch (character) {
    case u'&':
    case u'+':
      return " and ";
    case u'%':
      return " percent ";
    case u'\u00B0':
      return " degrees ";
    case u'\u0152':
    case u'\u0153':
      return "oe";
    case u'\u0160':
    case u'\u0161':
      return "s";
    case u'\u017D':
    case u'\u017E':
      return "z";
    case u'\u0178':
      return "y";
    case u'\u2018':
    case u'\u2019':
    case u'\u00B4':
    case u'`':
      return "'";
    default:
      break;
  }
  const auto code = static_cast<unsigned char>(byte);
  if (code >= 0xC0) return kLetters[code - 0xC0];
  if (code >= 0x80 || code < 0x20) return " ";
  const bool is_letter = (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z');
  const bool is_digit = code >= '0' && code <= '9';
  if (is_letter || is_digit || code == '\'' || code == '.' || code == '#') return {byte};
  return " ";
}

}  // namespace

std::vector<std::string> spoken_words(std::string_view name) {
  std::string ascii;
  for (const char byte : name) ascii += in_ascii(byte);
  ascii.resize(std::min(ascii.size(), kMostLetters));
  // Capitals are no hint: some people write all names in them.
  return english_words(to_lower(ascii));
}

}  // namespace homewarden::speech
