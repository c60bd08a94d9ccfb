#include "ui/qt/figure_painting.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace homewarden::view {
namespace {

QColor colour_of(FigureRole role, const Look& look) {
  switch (role) {
    case FigureRole::kCard:
      return look.card;
    case FigureRole::kLine:
      return look.line;
    case FigureRole::kEdge:
      return look.edge;
    case FigureRole::kText:
      return look.text;
    case FigureRole::kQuiet:
      return look.quiet;
    case FigureRole::kPrimary:
      return look.primary;
    case FigureRole::kLink:
      return look.link;
    case FigureRole::kAmber:
      return look.amber;
    case FigureRole::kInk:
      return look.ink;
    case FigureRole::kWarm:
      return look.warm;
  }
  return look.text;
}

QColor colour_of(const FigureColour& colour, const Look& look) {
  switch (colour.kind) {
    case FigureColour::Kind::kNone:
      return Qt::transparent;
    case FigureColour::Kind::kRole:
      return colour_of(colour.role, look);
    case FigureColour::Kind::kValue:
      return QColor(static_cast<QRgb>(look.dark ? colour.dark : colour.light));
  }
  return Qt::transparent;
}

QPainterPath path_of(const Outline& outline) {
  QPainterPath path;
  for (const PathStep& step : outline) {
    const auto& at = step.points;
    switch (step.kind) {
      case PathStep::Kind::kMove:
        path.moveTo(at[0], at[1]);
        break;
      case PathStep::Kind::kLine:
        path.lineTo(at[0], at[1]);
        break;
      case PathStep::Kind::kCurve:
        path.cubicTo(at[0], at[1], at[2], at[3], at[4], at[5]);
        break;
      case PathStep::Kind::kClose:
        path.closeSubpath();
        break;
    }
  }
  return path;
}

}  // namespace

void paint_figure(QPainter& painter, const Figure& figure, const FigureFrame& frame,
                  const QRectF& place, const Look& look) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  const double scale = std::min(place.width() / figure.width, place.height() / figure.height);
  painter.translate(place.center().x() - figure.width * scale / 2,
                    place.center().y() - figure.height * scale / 2);
  painter.scale(scale, scale);
  for (const FigureShape& shape : frame.shapes) {
    painter.setOpacity(shape.opacity);
    const bool has_stroke = shape.stroke.kind != FigureColour::Kind::kNone;
    painter.setPen(has_stroke ? QPen(colour_of(shape.stroke, look), shape.stroke_width,
                                     Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin)
                              : QPen(Qt::NoPen));
    painter.setBrush(colour_of(shape.fill, look));
    painter.drawPath(path_of(shape.outline));
  }
  painter.restore();
}

}  // namespace homewarden::view
