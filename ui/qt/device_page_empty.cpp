#include "ui/qt/device_page_empty.h"

#include <QPainter>
#include <QPainterPath>

#include "ui/qt/bindings.h"
#include "ui/qt/house_style.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/page.h"
#include "ui/qt/shapes.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

// A standing lamp beside the place where another one could be.
class EmptyDrawing : public QWidget {
 public:
  explicit EmptyDrawing(QWidget* parent) : QWidget(parent) { setFixedSize(200, 132); }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Look& look = look_of(palette());
    const QColor soft = mixed(look.edge, look.ground, 55);
    painter.setPen(QPen(soft, 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawLine(QPointF(12, 118), QPointF(188, 118));
    QPainterPath shade;
    shade.moveTo(54, 20);
    shade.lineTo(90, 20);
    shade.lineTo(102, 52);
    shade.lineTo(42, 52);
    shade.closeSubpath();
    painter.fillPath(shade, mixed(look.edge, look.ground, 16));
    painter.drawPath(shade);
    painter.drawLine(QPointF(72, 52), QPointF(72, 112));
    painter.drawLine(QPointF(56, 117), QPointF(88, 117));
    draw_box(painter, QRectF(116, 62, 56, 56), kBoxCorner, Qt::transparent, soft, 2, Qt::DashLine);
    draw_icon(painter, LineIcon::kPlus, QRectF(132, 78, 24, 24), look.link);
  }
};

}  // namespace

EmptyRoom::EmptyRoom(HousePanel& panel, QWidget* parent) : QWidget(parent) {
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 32, 0, 32);
  rows->setSpacing(12);
  rows->addWidget(new EmptyDrawing(this), 0, Qt::AlignHCenter);
  auto* sentence = new QLabel(this);
  bind(panel.lab_nodevices, sentence);
  rows->addWidget(sentence, 0, Qt::AlignHCenter);
  auto* button = make_button(panel.cmd_adddevice, this);
  set_kind(button, ButtonKind::kPrimary);
  rows->addWidget(button, 0, Qt::AlignHCenter);
  follow(panel.lab_nodevices.visible, this, [this](bool empty) { setVisible(empty); });
}

}  // namespace homewarden::view
