#include "ui/qt/undo_bar.h"

#include <QPainter>
#include <QStyleOptionButton>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/bindings.h"
#include "ui/qt/look.h"
#include "ui/qt/page.h"
#include "ui/qt/shapes.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kSide = 16;

}  // namespace

UndoBar::UndoBar(Label& message, QWidget* parent) : QPushButton(parent) {
  setCursor(Qt::PointingHandCursor);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  bind_common(message, this);
  follow(message.caption, this, [this](const std::string& text) {
    setText(qt::from_code_page(text).replace("&", "&&"));
    setAccessibleName(qt::from_code_page(text));
    if (toolTip().isEmpty()) setToolTip(tr("Undo (Ctrl+Z)"));
  });
  connect(this, &QPushButton::clicked, this, [&message] { message.click(); });
}

QSize UndoBar::sizeHint() const {
  return {320, std::max(44, fontMetrics().height() + 20)};
}

QSize UndoBar::minimumSizeHint() const {
  return {120, sizeHint().height()};
}

void UndoBar::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  draw_box(painter, rect(), kBoxCorner, look.message, Qt::transparent);
  QString words = accessibleName();
  const QString undo = tr("Undo");
  if (words.endsWith(undo)) words.chop(undo.size());
  QFont bold = font();
  bold.setBold(true);
  const int link = QFontMetrics(bold).horizontalAdvance(undo) + 2;
  const QRect room = rect().adjusted(kSide, 0, -kSide - link - kSide, 0);
  painter.setPen(look.message_text);
  painter.drawText(room, Qt::AlignVCenter,
                   fontMetrics().elidedText(words, Qt::ElideRight, room.width()));
  QFont shown = bold;
  shown.setUnderline(underMouse());
  painter.setFont(shown);
  painter.setPen(look.message_link);
  painter.drawText(QRect(width() - kSide - link, 0, link, height()), Qt::AlignVCenter, undo);
  QStyleOptionButton option;
  initStyleOption(&option);
  if (hasFocus() && (option.state & QStyle::State_KeyboardFocusChange) != 0)
    draw_focus(painter, rect(), kBoxCorner, look);
}

}  // namespace homewarden::view
