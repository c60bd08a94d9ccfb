#pragma once

#include <QRectF>

#include "ui/figure.h"
#include "ui/qt/look.h"

class QPainter;

namespace homewarden::view {

// A frame of the figure, as large as the place allows and in its middle.
void paint_figure(QPainter& painter, const Figure& figure, const FigureFrame& frame,
                  const QRectF& place, const Look& look);

}  // namespace homewarden::view
