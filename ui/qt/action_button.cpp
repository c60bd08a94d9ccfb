#include "ui/qt/action_button.h"

#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

#include "ui/qt/bindings.h"
#include "ui/qt/look.h"
#include "ui/qt/shapes.h"

namespace homewarden::view {
namespace {

constexpr int kGap = 8;

QColor words_of(ButtonKind kind, bool enabled, const Look& look) {
  if (!enabled) return look.quiet;
  switch (kind) {
    case ButtonKind::kPrimary:
      return Qt::white;
    case ButtonKind::kFlat:
      return look.link;
    case ButtonKind::kDanger:
      return look.failed;
    case ButtonKind::kPlain:
    case ButtonKind::kGhost:
      break;
  }
  return look.text;
}

}  // namespace

ActionButton::ActionButton(LineIcon icon, ButtonKind kind, QWidget* parent)
    : SteadyButton(parent), icon_(icon), kind_(kind) {
  set_kind(this, kind);
  setIcon(make_icon(icon));  // for the room that it takes
}

QSize ActionButton::sizeHint() const {
  if (text().isEmpty()) {
    const int square = std::max(36, fontMetrics().height() + 14);
    return {square, square};
  }
  QSize size = SteadyButton::sizeHint();
  QFont bold = font();
  bold.setBold(true);
  const int words = QFontMetrics(bold).size(Qt::TextShowMnemonic, text()).width();
  const int margins = kind_ == ButtonKind::kFlat ? 12 : 28;
  size.setWidth(words + sign_side() + kGap + margins);
  return size;
}

int ActionButton::sign_side() const {
  return std::clamp(fontMetrics().height() - 3, 16, 40);
}

void ActionButton::set_icon(LineIcon icon) {
  icon_ = icon;
  update();
}

void ActionButton::turn_into(ButtonKind kind) {
  kind_ = kind;
  set_kind(this, kind);
}

void ActionButton::paintEvent(QPaintEvent* /*event*/) {
  QStyleOptionButton option;
  initStyleOption(&option);
  QStylePainter painter(this);
  painter.drawControl(QStyle::CE_PushButtonBevel, option);
  const Look& look = look_of(palette());
  const QColor colour = words_of(kind_, isEnabled(), look);
  const int side = sign_side();
  if (text().isEmpty()) return draw_icon(painter, icon_, centred(rect(), side), colour);
  const QString words = fontMetrics().elidedText(text(), Qt::ElideRight, width() - side - kGap - 8,
                                                 Qt::TextShowMnemonic);
  const int wide = fontMetrics().size(Qt::TextShowMnemonic, words).width();
  const int left = (width() - side - kGap - wide) / 2;
  draw_icon(painter, icon_, centred(QRectF(left, 0, side, height()), side), colour);
  painter.setPen(colour);
  painter.drawText(QRect(left + side + kGap, 0, wide + 2, height()),
                   Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, words);
}

ActionButton* make_action(Button& control, LineIcon icon, ButtonKind kind, QWidget* parent) {
  auto* button = new ActionButton(icon, kind, parent);
  bind(control, button);
  return button;
}

QPushButton* make_sign_button(LineIcon icon, const QString& name, QWidget* parent) {
  auto* button = new ActionButton(icon, ButtonKind::kFlat, parent);
  button->setAccessibleName(name);
  button->setToolTip(name);
  button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  return button;
}

}  // namespace homewarden::view
