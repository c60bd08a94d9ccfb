#include "ui/qt/card_add.h"

#include <QKeyEvent>
#include <QPainter>

#include "platform/qt/text_codec.h"
#include "ui/qt/card_layout.h"
#include "ui/qt/device_card.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/scaled_font.h"
#include "ui/qt/shapes.h"
#include "ui/qt/tip_text.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr double kCircle = 56;
constexpr double kPlus = 24;

}  // namespace

AddCard::AddCard(HousePanel& panel, QWidget* parent) : QAbstractButton(parent) {
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  follow(panel.cmd_adddevice.caption, this,
         [this](const std::string& text) { setText(qt::from_code_page(text)); });
  follow(panel.cmd_adddevice.tool_tip, this,
         [this](const std::string& tip) { setToolTip(tip_text(tip)); });
  follow(panel.lab_nextaddress.caption, this, [this](const std::string& text) {
    setAccessibleDescription(qt::from_code_page(text));
    update();
  });
  // On the last page, and not in an empty room, which has a button of its own.
  const auto show = [this, &panel] {
    const int last = static_cast<int>(panel.pages.get().size()) - 1;
    setVisible(panel.page >= last && !panel.lab_nodevices.visible);
  };
  follow(panel.page, this, [show](int) { show(); });
  watch(panel.pages.changed, this, show);
  watch(panel.lab_nodevices.visible.changed, this, show);
  connect(this, &QAbstractButton::clicked, this, [&panel] { panel.cmd_adddevice.click(); });
}

QSize AddCard::sizeHint() const {
  const int ring = DeviceCard::kRing;
  return CardLayout::least(fontMetrics()).grownBy({ring, ring, ring, ring});
}

void AddCard::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  const int ring = DeviceCard::kRing;
  const QRectF card = QRectF(rect()).adjusted(ring, ring, -ring, -ring);
  const QColor ground = isDown() ? look.press : underMouse() ? look.over : QColor(Qt::transparent);
  draw_box(painter, card, kCardCorner, ground, look.edge, 1, Qt::DashLine);
  const int line = fontMetrics().height();
  const double height = kCircle + 12 + line + 8 + 2 * line;
  QRectF circle(card.center().x() - kCircle / 2, card.center().y() - height / 2, kCircle, kCircle);
  draw_box(painter, circle, kCircle / 2, Qt::transparent, look.link);
  draw_icon(painter, LineIcon::kPlus, centred(circle, kPlus), look.link);
  QFont words = font();
  words.setBold(true);
  painter.setFont(words);
  painter.setPen(look.link);
  QRectF place(card.left() + 8, circle.bottom() + 12, card.width() - 16, line + 4);
  painter.drawText(place, Qt::AlignCenter, text());
  painter.setFont(scaled_font(font(), 0.86));
  painter.setPen(look.quiet);
  place.setTop(place.bottom() + 4);
  place.setHeight(2 * line);
  painter.drawText(place, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap,
                   accessibleDescription());
  if (hasFocus() && shows_focus_)
    draw_box(painter, rect(), kCardCorner + ring, Qt::transparent, look.focus, 2);
}

void AddCard::focusInEvent(QFocusEvent* event) {
  shows_focus_ = event->reason() != Qt::MouseFocusReason;
  QAbstractButton::focusInEvent(event);
}

void AddCard::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
    click();
  else
    QAbstractButton::keyPressEvent(event);
}

}  // namespace homewarden::view
