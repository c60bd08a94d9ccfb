#include "platform/qt/text_codec.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace homewarden {
namespace {

// Bytes 80 to 9F; all others are the Unicode character of the same number.
constexpr std::array<char16_t, 32> kUpper = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

QString from_code_page(std::string_view bytes) {
  QString text;
  text.reserve(static_cast<qsizetype>(bytes.size()));
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    const bool upper = code >= 0x80 && code <= 0x9F;
    text += QChar(upper ? kUpper[static_cast<std::size_t>(code - 0x80)] : char16_t{code});
  }
  return text;
}

std::string to_code_page(const QString& text) {
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(text.size()));
  for (const QChar character : text) {
    const char16_t code = character.unicode();
    const auto upper = std::find(kUpper.begin(), kUpper.end(), code);
    if (upper != kUpper.end())
      bytes += static_cast<char>(0x80 + std::distance(kUpper.begin(), upper));
    else if (code <= 0xFF && !(code >= 0x80 && code <= 0x9F))
      bytes += static_cast<char>(code);
    else if (!character.isLowSurrogate())
      bytes += '?';
  }
  return bytes;
}

}  // namespace homewarden
