#include "ui/qt/scaled_font.h"

#include <QApplication>
#include <algorithm>

namespace homewarden::view {

QFont scaled_font(QFont font, double factor, bool bold) {
  if (font.pointSizeF() > 0)
    font.setPointSizeF(font.pointSizeF() * factor);
  else
    font.setPixelSize(std::max(1, qRound(font.pixelSize() * factor)));
  font.setBold(bold);
  return font;
}

QFont scaled_font(double factor, bool bold) {
  return scaled_font(QApplication::font(), factor, bold);
}

}  // namespace homewarden::view
