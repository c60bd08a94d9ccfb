#include "ui/qt/sun_arc.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "ui/qt/look.h"
#include "ui/qt/scaled_label.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kArc = 72;
constexpr int kSun = 18;
constexpr int kSteps = 48;

QString clock(int minute) {
  return QString("%1:%2").arg(minute / 60, 2, 10, QChar('0')).arg(minute % 60, 2, 10, QChar('0'));
}

}  // namespace

SunArc::SunArc(OptionsPanel& options, QWidget* parent) : QWidget(parent), options_(options) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  for (Signal<>* changed :
       {&options.sunrise.changed, &options.sunset.changed, &options.minute.changed})
    watch(*changed, this, [this] { update(); });
}

QSize SunArc::sizeHint() const {
  return {240, kArc + kSun + 12 + QFontMetrics(scaled_font(0.86)).height() + 8};
}

void SunArc::paintEvent(QPaintEvent* /*event*/) {
  const auto rise = options_.sunrise.get();
  const auto set = options_.sunset.get();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Look& look = look_of(palette());
  const double ground = kArc + kSun;
  painter.setPen(QPen(look.edge, 1.5));
  painter.drawLine(QPointF(0, ground), QPointF(width(), ground));
  if (!rise || !set || *set <= *rise) return;
  const double left = width() * 0.15;
  const double reach = width() - 2 * left;
  const auto point = [&](double part) {
    return QPointF(left + part * reach, ground - kArc * std::sin(std::numbers::pi * part));
  };
  QPainterPath arc(point(0));
  for (int step = 1; step <= kSteps; ++step) arc.lineTo(point(double(step) / kSteps));
  QColor warm = look.amber;
  warm.setAlphaF(0.14F);
  painter.fillPath(arc, warm);
  painter.setPen(QPen(look.line_on, 3, Qt::SolidLine, Qt::RoundCap));
  painter.drawPath(arc);

  painter.setFont(scaled_font(0.86));
  painter.setPen(look.quiet);
  const int line = painter.fontMetrics().height();
  const auto label = [&](double part, int minute) {
    const QRectF place(point(part).x() - 60, ground + 6, 120, line);
    painter.drawText(place, Qt::AlignCenter, clock(minute));
  };
  label(0, *rise);
  label(0.5, (*rise + *set) / 2);
  label(1, *set);

  const double now = double(options_.minute.get() - *rise) / (*set - *rise);
  if (now < 0 || now > 1) return;
  const QPointF sun = point(now);
  warm.setAlphaF(0.3F);
  painter.setPen(Qt::NoPen);
  painter.setBrush(warm);
  painter.drawEllipse(sun, kSun, kSun);
  painter.setPen(QPen(look.line_on, 1.5));
  painter.setBrush(look.amber);
  painter.drawEllipse(sun, kSun / 2.0, kSun / 2.0);
}

}  // namespace homewarden::view
