#include "ui/qt/level_bar.h"

#include <QPainter>
#include <algorithm>

#include "ui/qt/page.h"
#include "ui/qt/shapes.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kTooLoud = 97;  // percent

}  // namespace

LevelBar::LevelBar(Property<int>& level, QWidget* parent) : QWidget(parent), level_(level) {
  setFixedHeight(12);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setAccessibleName(tr("Loudness"));
  watch(level.changed, this, [this] { update(); });
}

void LevelBar::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  const QRectF bar = QRectF(rect()).adjusted(0, 2, 0, -2);
  draw_box(painter, bar, bar.height() / 2, look.field, look.edge);
  if (level_ <= 0) return;
  QRectF loud = bar.adjusted(1, 1, -1, -1);
  loud.setWidth(std::max(loud.height(), loud.width() * level_ / 100.0));
  draw_box(painter, loud, loud.height() / 2, level_ < kTooLoud ? look.link : look.failed,
           Qt::transparent);
}

}  // namespace homewarden::view
