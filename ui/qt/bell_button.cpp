#include "ui/qt/bell_button.h"

#include <QPainter>
#include <algorithm>

#include "ui/qt/line_icons.h"
#include "ui/qt/look.h"
#include "ui/qt/scaled_label.h"
#include "ui/qt/shapes.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kSide = 12;
constexpr int kGap = 8;
constexpr int kSign = 16;
constexpr int kLeast = 32;
constexpr double kSmall = 0.86;

int badge_width(const QFontMetrics& metrics, int count) {
  return std::max(metrics.height() + 2, metrics.horizontalAdvance(QString::number(count)) + 12);
}

}  // namespace

BellButton::BellButton(MessagePanel& panel, QWidget* parent)
    : QAbstractButton(parent), panel_(panel) {
  setText(tr("Messages"));
  setAccessibleName(text());
  setToolTip(tr("What has happened"));
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  connect(this, &QAbstractButton::clicked, this, [this] { panel_.messages_asked(); });
  follow(panel.messages, this, [this](const auto&) { show_unread(); });
}

void BellButton::set_short(bool is_short) {
  if (is_short == short_) return;
  short_ = is_short;
  updateGeometry();
  update();
}

void BellButton::show_unread() {
  const auto& messages = panel_.messages.get();
  unread_ = panel_.unread;
  failed_ = std::any_of(messages.begin(), messages.end(), [](const MessageEntry& message) {
    return message.failed && !message.seen;
  });
  setAccessibleDescription(unread_ > 0 ? tr("%1 unread").arg(unread_) : QString());
  updateGeometry();
  update();
}

QSize BellButton::sizeHint() const {
  const QFontMetrics words(scaled_font(kSmall));
  const QFontMetrics bold(scaled_font(kSmall, true));
  int width = kSide + kSign + (short_ ? 0 : kGap + words.horizontalAdvance(text())) + kSide;
  if (unread_ > 0) width += kGap + badge_width(bold, unread_);
  return {width, std::max(kLeast, words.height() + 8)};
}

void BellButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  const QRectF inner = QRectF(rect()).adjusted(2, 2, 0, -2);
  const QColor ground = isDown() ? look.press : underMouse() ? look.over : QColor(Qt::transparent);
  draw_box(painter, inner, kControlCorner, ground, Qt::transparent);
  painter.fillRect(QRectF(0, 0, 1, height()), look.line);
  int x = kSide;
  draw_icon(painter, LineIcon::kBell, QRectF(x, (height() - kSign) / 2.0, kSign, kSign), look.text);
  x += kSign + kGap;
  if (!short_) {
    painter.setFont(scaled_font(kSmall));
    painter.setPen(look.text);
    painter.drawText(QRect(x, 0, width() - x, height()), Qt::AlignVCenter, text());
    x += painter.fontMetrics().horizontalAdvance(text()) + kGap;
  }
  if (unread_ > 0) {
    painter.setFont(scaled_font(kSmall, true));
    const int wide = badge_width(painter.fontMetrics(), unread_);
    const int high = painter.fontMetrics().height() + 2;
    const QRectF badge(x, (height() - high) / 2.0, wide, high);
    draw_box(painter, badge, high / 2.0, failed_ ? look.failed : look.primary, Qt::transparent);
    painter.setPen(failed_ && look.dark ? look.ground : QColor(Qt::white));
    painter.drawText(badge, Qt::AlignCenter, QString::number(unread_));
  }
  if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange))
    draw_box(painter, inner, kControlCorner, Qt::transparent, look.focus, 2);
}

}  // namespace homewarden::view
