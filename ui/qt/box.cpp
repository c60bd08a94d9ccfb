#include "ui/qt/box.h"

#include <QPainter>

#include "ui/qt/look.h"
#include "ui/qt/shapes.h"

namespace homewarden::view {
namespace {

constexpr int kDot = 10;

}  // namespace

Box::Box(QWidget* parent, int padding, Kind kind)
    : QWidget(parent), rows_(new QVBoxLayout(this)), kind_(kind) {
  rows_->setContentsMargins(padding, padding, padding, padding);
  rows_->setSpacing(8);
}

void Box::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  const bool failed = kind_ == Kind::kFailed;
  draw_box(painter, rect(), kBoxCorner, failed ? look.failed_ground : look.card,
           failed ? look.failed : look.line);
}

Rule::Rule(QWidget* parent) : QWidget(parent) {
  setFixedHeight(1);
}

void Rule::paintEvent(QPaintEvent* /*event*/) {
  QPainter(this).fillRect(rect(), look_of(palette()).line);
}

Dot::Dot(QWidget* parent) : QWidget(parent) {
  setFixedSize(kDot, kDot);
}

void Dot::set_tone(Tone tone) {
  tone_ = tone;
  update();
}

void Dot::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  switch (tone_) {
    case Tone::kOk:
      draw_box(painter, rect(), kDot / 2.0, look.ok, Qt::transparent);
      break;
    case Tone::kFailed:
      draw_box(painter, rect(), kDot / 2.0, look.failed, Qt::transparent);
      break;
    case Tone::kUnderWay:
      draw_box(painter, rect(), kDot / 2.0, look.link, Qt::transparent);
      break;
    case Tone::kOn:
      draw_box(painter, rect(), kDot / 2.0, look.amber, look.line_on, 1.5);
      break;
    case Tone::kOff:
      draw_box(painter, rect(), kDot / 2.0, Qt::transparent, look.edge, 1.5);
      break;
  }
}

}  // namespace homewarden::view
