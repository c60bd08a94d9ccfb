#include "ui/qt/device_button.h"

#include <QKeyEvent>
#include <QPainter>

namespace homewarden::view {
namespace {

constexpr int kFocusFrame = 5;
constexpr double kCorner = 15;
constexpr double kDimmed = 0.55;

}  // namespace

DeviceButton::DeviceButton(QWidget* parent) : QAbstractButton(parent) {
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
}

void DeviceButton::set_picture(const QString& file) {
  picture_ = QPixmap(file);
  update();
}

void DeviceButton::set_dimmed(bool dimmed) {
  dimmed_ = dimmed;
  update();
}

void DeviceButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  if (picture_.isNull()) return;
  const int edge = kFocusFrame + (isDown() ? 2 : 0);
  const QRect place = QRect(0, 0, kSide, kSide).adjusted(edge, edge, -edge, -edge);
  const QSize pixels = place.size() * devicePixelRatioF();
  painter.setOpacity(dimmed_ ? kDimmed : 1.0);
  painter.drawPixmap(place, picture_.scaled(pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation));
  painter.setOpacity(1.0);
  if (!hasFocus()) return;
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kCorner, kCorner);
}

void DeviceButton::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
    QAbstractButton::keyPressEvent(event);
  else if (!event->isAutoRepeat())  // a key held down switches once
    click();
}

}  // namespace homewarden::view
