#include "ui/qt/message_rows.h"

#include <QAbstractItemView>
#include <QPainter>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/look.h"
#include "ui/qt/scaled_label.h"
#include "ui/qt/shapes.h"

namespace homewarden::view {
namespace {

constexpr int kLeft = 44;
constexpr int kRight = 12;
constexpr int kAbove = 8;
constexpr int kSign = 20;
constexpr double kSmall = 0.86;

int foot_height() {
  return std::max(QFontMetrics(scaled_font(kSmall)).height(),
                  QFontMetrics(scaled_font(1, true)).height());
}

}  // namespace

MessageRows::MessageRows(MessagePanel& panel, QAbstractItemView* list)
    : QStyledItemDelegate(list), panel_(panel), list_(*list) {}

QString MessageRows::spoken(const MessageEntry& message) {
  QString words = qt::from_code_page(message.time) + ", ";
  if (message.failed) words += tr("failed") + ", ";
  words += qt::from_code_page(message.text);
  if (message.undoable) words += ", " + tr("Enter undoes it");
  return words;
}

const MessageEntry* MessageRows::message_at(const QModelIndex& index) const {
  const auto& messages = panel_.messages.get();
  const auto row = static_cast<std::size_t>(index.row());
  return row < messages.size() ? &messages[row] : nullptr;
}

int MessageRows::words_height(const QString& words, int width) const {
  return list_.fontMetrics()
      .boundingRect(QRect(0, 0, width - kLeft - kRight, 10000), Qt::TextWordWrap, words)
      .height();
}

QSize MessageRows::sizeHint(const QStyleOptionViewItem& /*option*/,
                            const QModelIndex& index) const {
  const int width = list_.viewport()->width();
  const MessageEntry* message = message_at(index);
  const QString words = message ? qt::from_code_page(message->text) : QString();
  return {width, kAbove + words_height(words, width) + 2 + foot_height() + kAbove};
}

QRect MessageRows::undo_place(const QRect& row, const QModelIndex& index) const {
  const MessageEntry* message = message_at(index);
  if (!message || !message->undoable) return {};
  const QFontMetrics metrics(scaled_font(1, true));
  const int width = metrics.horizontalAdvance(tr("Undo")) + 24;
  const int height = foot_height() + 12;
  return {row.right() - width + 1, row.bottom() - height + 1, width, height};
}

void MessageRows::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  const MessageEntry* message = message_at(index);
  if (!message) return;
  const Look& look = look_of(list_.palette());
  const QRect row = option.rect;
  painter->save();
  const bool chosen = (option.state & QStyle::State_Selected) != 0 && list_.hasFocus();
  if (chosen || (option.state & QStyle::State_MouseOver) != 0)
    draw_box(*painter, row, kControlCorner, chosen ? look.selected : look.over, Qt::transparent);
  const LineIcon sign = message->failed ? LineIcon::kWarning : LineIcon::kInfo;
  draw_icon(*painter, sign, QRectF(row.left() + 12, row.top() + kAbove, kSign, kSign),
            message->failed ? look.failed : look.quiet);
  QRect words = row.adjusted(kLeft, kAbove, -kRight, -kAbove);
  painter->setFont(list_.font());
  painter->setPen(look.text);
  painter->drawText(words, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap,
                    qt::from_code_page(message->text));
  painter->setFont(scaled_font(kSmall));
  painter->setPen(look.quiet);
  painter->drawText(words, Qt::AlignLeft | Qt::AlignBottom, qt::from_code_page(message->time));
  if (message->undoable) {
    painter->setFont(scaled_font(1, true));
    painter->setPen(look.link);
    painter->drawText(words, Qt::AlignRight | Qt::AlignBottom, tr("Undo"));
  }
  painter->restore();
}

}  // namespace homewarden::view
