#pragma once

#include <QColor>
#include <QRectF>

#include "ui/qt/look.h"

class QPainter;

namespace homewarden::view {

constexpr double kControlCorner = 8;
constexpr double kBoxCorner = 12;
constexpr double kCardCorner = 16;

// A filled shape with round corners, its border inside. Transparent colours draw nothing.
void draw_box(QPainter& painter, const QRectF& place, double corner, const QColor& fill,
              const QColor& border, double width = 1, Qt::PenStyle pen = Qt::SolidLine);

// The ring that says where the keyboard is, inside the place, with a gap to what it surrounds.
void draw_focus(QPainter& painter, const QRectF& place, double corner, const Look& look);

// A square in the middle of the place.
QRectF centred(const QRectF& place, double side);

}  // namespace homewarden::view
