#include "ui/qt/link_button.h"

#include <QPainter>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/bindings.h"
#include "ui/qt/look.h"
#include "ui/qt/scaled_label.h"
#include "ui/qt/shapes.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kSide = 2;
constexpr int kAbove = 6;
constexpr int kSign = 18;
constexpr int kLeastHeight = 32;
constexpr int kWords = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap;

}  // namespace

LinkButton::LinkButton(Label& control, double factor, std::optional<LineIcon> icon, QWidget* parent)
    : QAbstractButton(parent), factor_(factor), icon_(icon) {
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setCursor(Qt::PointingHandCursor);
  bind_common(control, this);
  follow(control.caption, this, [this](const std::string& text) {
    setText(qt::from_code_page(text));
    setAccessibleName(this->text());
    updateGeometry();
  });
  connect(this, &QAbstractButton::clicked, this, [&control] { control.click(); });
}

QFont LinkButton::words_font() const {
  return scaled_font(factor_);
}

int LinkButton::words_left() const {
  return icon_ ? kSide + kSign + 6 : kSide;
}

QSize LinkButton::sizeHint() const {
  const QFontMetrics metrics(words_font());
  return {metrics.horizontalAdvance(text()) + words_left() + kSide + 2,
          std::max(kLeastHeight, metrics.height() + 2 * kAbove)};
}

QSize LinkButton::minimumSizeHint() const {
  return {QFontMetrics(words_font()).averageCharWidth() * 16 + words_left() + kSide, kLeastHeight};
}

int LinkButton::heightForWidth(int width) const {
  const QRect room(0, 0, std::max(1, width - words_left() - kSide), 1000);
  const int words = QFontMetrics(words_font()).boundingRect(room, kWords, text()).height();
  return std::max(kLeastHeight, words + 2 * kAbove);
}

void LinkButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  if (isDown()) draw_box(painter, rect(), kControlCorner, look.press, Qt::transparent);
  if (icon_)
    draw_icon(painter, *icon_, QRectF(kSide, (height() - kSign) / 2.0, kSign, kSign), look.link);
  QFont font = words_font();
  font.setUnderline(underMouse());
  painter.setFont(font);
  painter.setPen(failed_ ? look.failed : look.link);
  painter.drawText(rect().adjusted(words_left(), 0, -kSide, 0), kWords, text());
  if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange))
    draw_focus(painter, rect(), kControlCorner, look);
}

}  // namespace homewarden::view
