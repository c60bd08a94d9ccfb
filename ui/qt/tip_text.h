#pragma once

#include <QString>
#include <QTextDocument>
#include <string>

#include "platform/qt/text_codec.h"

namespace homewarden::view {

// What a tool tip is given for a text of the program: names of rooms and devices are never taken
// for markup, and what is long goes over several lines instead of beyond the screen.
inline QString tip_text(const QString& plain) {
  constexpr int kLongLine = 80;
  const bool fits = plain.size() <= kLongLine && !Qt::mightBeRichText(plain);
  return fits ? plain : Qt::convertFromPlainText(plain, Qt::WhiteSpaceNormal);
}
inline QString tip_text(const std::string& text) {
  return tip_text(qt::from_code_page(text));
}

}  // namespace homewarden::view
