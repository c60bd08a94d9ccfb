#include "platform/qt/text_codec.h"

#include "base/code_page.h"

namespace homewarden::qt {

QString from_code_page(std::string_view bytes) {
  QString text;
  text.reserve(static_cast<qsizetype>(bytes.size()));
  for (const char byte : bytes)
    text +=
        byte == kUnknownCharacter ? QChar(QChar::ReplacementCharacter) : QChar(character_of(byte));
  return text;
}

std::string to_code_page(const QString& text) {
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(text.size()));
  for (const QChar character : text) {
    if (const auto byte = byte_of(character.unicode()))
      bytes += *byte;
    else if (!character.isLowSurrogate())
      bytes += kUnknownCharacter;
  }
  return bytes;
}

}  // namespace homewarden::qt
