#include "ui/qt/floating_window.h"

#include <QPainterPath>
#include <QRegion>

#include "ui/qt/shapes.h"
#include "ui/qt/x11_desktop.h"

namespace homewarden::view {

FloatingWindow::FloatingWindow()
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                           Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint) {
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setFocusPolicy(Qt::NoFocus);
}

void FloatingWindow::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  blends_ = blends_windows();
  take_shape();
}

void FloatingWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  take_shape();
}

void FloatingWindow::take_shape() {
  if (blends_) return clearMask();
  QPainterPath shape;
  shape.addRoundedRect(rect(), kBoxCorner, kBoxCorner);
  setMask(QRegion(shape.toFillPolygon().toPolygon()));
}

}  // namespace homewarden::view
