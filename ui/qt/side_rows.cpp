#include "ui/qt/side_rows.h"

#include <QPainter>
#include <algorithm>

#include "ui/qt/line_icons.h"
#include "ui/qt/look.h"
#include "ui/qt/page.h"
#include "ui/qt/scaled_font.h"
#include "ui/qt/shapes.h"

namespace homewarden::view {
namespace {

constexpr int kSign = 20;
constexpr const char* kFindKeys = "Ctrl+K";

int row_height(const QWidget& row) {
  return std::max(kSideRow, row.fontMetrics().height() + 12);
}

void draw_ring(QPainter& painter, const QAbstractButton& button, const Look& look) {
  if (button.hasFocus() && button.window()->testAttribute(Qt::WA_KeyboardFocusChange))
    draw_box(painter, button.rect(), kControlCorner, Qt::transparent, look.focus, 2);
}

void elided(QPainter& painter, const QRect& place, const QString& text) {
  painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft,
                   painter.fontMetrics().elidedText(text, Qt::ElideRight, place.width()));
}

}  // namespace

void draw_side_button(QPainter& painter, const QAbstractButton& button, const Look& look) {
  const QColor ground = button.isChecked()    ? look.selected
                        : button.isDown()     ? look.press
                        : button.underMouse() ? look.over
                                              : QColor(Qt::transparent);
  draw_box(painter, button.rect(), kControlCorner, ground, Qt::transparent);
  draw_ring(painter, button, look);
}

FootRow::FootRow(QWidget* parent) : QAbstractButton(parent) {
  setCheckable(true);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
}

QSize FootRow::sizeHint() const {
  return {120, row_height(*this)};
}

void FootRow::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  draw_side_button(painter, *this, look);
  if (isChecked())
    draw_box(painter, QRectF(0, 8, 3, height() - 16), 1.5, look.focus, Qt::transparent);
  draw_icon(painter, LineIcon::kGear, QRectF(8, height() / 2.0 - kSign / 2.0, kSign, kSign),
            isChecked() ? look.text : look.quiet);
  QFont words = font();
  words.setBold(isChecked());
  painter.setFont(words);
  painter.setPen(isEnabled() ? look.text : look.quiet);
  const QRect place(40, 0, width() - 44, height());
  elided(painter, place, text());
}

FindButton::FindButton(QWidget* parent) : QAbstractButton(parent) {
  setText(tr("Find anything"));
  setAccessibleName(text());
  setToolTip(tr("Devices, rooms, events and pages (%1)").arg(kFindKeys));
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setCursor(Qt::IBeamCursor);
}

QSize FindButton::sizeHint() const {
  return {120, row_height(*this)};
}

void FindButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  draw_box(painter, rect(), kControlCorner, look.field, underMouse() ? look.edge : look.line);
  draw_ring(painter, *this, look);
  draw_icon(painter, LineIcon::kSearch, QRectF(10, height() / 2.0 - 9, 18, 18), look.quiet);
  painter.setFont(scaled_font(0.86));
  const QFontMetrics metrics = painter.fontMetrics();
  const int keys = metrics.horizontalAdvance(kFindKeys) + 12;
  const QRect cap(width() - keys - 8, (height() - metrics.height()) / 2 - 2, keys,
                  metrics.height() + 4);
  draw_box(painter, cap, 4, Qt::transparent, look.line);
  painter.setPen(look.quiet);
  painter.drawText(cap, Qt::AlignCenter, kFindKeys);
  painter.setFont(font());
  elided(painter, QRect(36, 0, cap.left() - 40, height()), text());
}

}  // namespace homewarden::view
