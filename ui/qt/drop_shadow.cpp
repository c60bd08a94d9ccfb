#include "ui/qt/drop_shadow.h"

#include <QPainter>
#include <QPixmapCache>
#include <algorithm>

#include "ui/qt/shapes.h"

namespace homewarden::view {
namespace {

constexpr int kBlur = 32;
constexpr int kDown = 12;
constexpr int kCorner = kBlur + static_cast<int>(kBoxCorner) + 4;  // of the nine parts
constexpr double kDarkest = 0.2;

// Many thin shapes, each a step smaller, so that the edge fades.
QPixmap nine_parts(double ratio) {
  const QString key = QString("drop %1").arg(ratio);
  QPixmap parts;
  if (QPixmapCache::find(key, &parts)) return parts;
  constexpr int kSide = 2 * kCorner + 1;
  parts = QPixmap(QSize(kSide, kSide) * ratio);
  parts.setDevicePixelRatio(ratio);
  parts.fill(Qt::transparent);
  QPainter painter(&parts);
  double there = 0;
  for (int step = 1; step <= kBlur; ++step) {
    const double share = static_cast<double>(step) / kBlur;
    const double wanted = kDarkest * share * share;
    const double more = (wanted - there) / (1 - there);
    there = wanted;
    const QRectF place = QRectF(0, 0, kSide, kSide).adjusted(step, step, -step, -step);
    draw_box(painter, place, kBlur + kBoxCorner - step,
             QColor::fromRgbF(0, 0, 0, static_cast<float>(more)), Qt::transparent);
  }
  QPixmapCache::insert(key, parts);
  return parts;
}

}  // namespace

DropShadow::DropShadow(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

void DropShadow::put_around(const QRect& place) {
  setGeometry(place.adjusted(-kBlur, -kBlur, kBlur, kBlur).translated(0, kDown));
}

void DropShadow::set_strength(double strength) {
  strength_ = strength;
  update();
}

void DropShadow::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setOpacity(strength_);
  const double ratio = devicePixelRatioF();
  const QPixmap parts = nine_parts(ratio);
  const double corner = std::min({kCorner, width() / 2, height() / 2});
  const double from[] = {0, corner, parts.width() / ratio - corner, parts.width() / ratio};
  const double across[] = {0, corner, width() - corner, static_cast<double>(width())};
  const double down[] = {0, corner, height() - corner, static_cast<double>(height())};
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      const QRectF target(QPointF(across[column], down[row]),
                          QPointF(across[column + 1], down[row + 1]));
      const QRectF source(QPointF(from[column], from[row]) * ratio,
                          QPointF(from[column + 1], from[row + 1]) * ratio);
      painter.drawPixmap(target, parts, source);
    }
  }
}

}  // namespace homewarden::view
