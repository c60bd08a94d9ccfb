#include "ui/qt/shapes.h"

#include <QPainter>
#include <algorithm>

namespace homewarden::view {

void draw_box(QPainter& painter, const QRectF& place, double corner, const QColor& fill,
              const QColor& border, double width, Qt::PenStyle pen) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  const double inset = border.alpha() > 0 ? width / 2 : 0;
  if (border.alpha() > 0)
    painter.setPen(QPen(border, width, pen));
  else
    painter.setPen(Qt::NoPen);
  painter.setBrush(fill);
  const double radius = std::max(0.0, corner - inset);
  painter.drawRoundedRect(place.adjusted(inset, inset, -inset, -inset), radius, radius);
  painter.restore();
}

void draw_focus(QPainter& painter, const QRectF& place, double corner, const Look& look) {
  draw_box(painter, place.adjusted(2, 2, -2, -2), corner - 2, Qt::transparent, look.card, 2);
  draw_box(painter, place, corner, Qt::transparent, look.focus, 2);
}

QRectF centred(const QRectF& place, double side) {
  return {place.center().x() - side / 2, place.center().y() - side / 2, side, side};
}

}  // namespace homewarden::view
