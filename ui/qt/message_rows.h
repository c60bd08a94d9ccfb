#pragma once

#include <QStyledItemDelegate>

#include "ui/message_panel.h"

namespace homewarden::view {

// Draws a message in a row of the list: its sign, its words over as many lines as they take, when
// it came, and the offer to undo it.
class MessageRows : public QStyledItemDelegate {
 public:
  // A child of the list.
  MessageRows(MessagePanel& panel, QAbstractItemView* list);

  static QString spoken(const MessageEntry& message);
  // Where in the row its offer stands; empty when it makes none.
  QRect undo_place(const QRect& row, const QModelIndex& index) const;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  const MessageEntry* message_at(const QModelIndex& index) const;
  int words_height(const QString& words, int width) const;

  MessagePanel& panel_;
  QAbstractItemView& list_;
};

}  // namespace homewarden::view
