#pragma once

#include <QModelIndex>
#include <QStyledItemDelegate>

#include "ui/tree_view.h"

namespace homewarden::view {

// How the rows of the navigation tree look: the fixed panels with their signs, above the first room
// a caption with a sign that adds a room, rooms with an arrow and the number of devices that are
// on, devices with a dot and their level.
class TreeRows : public QStyledItemDelegate {
 public:
  static constexpr int kIndentation = 32;

  using QStyledItemDelegate::QStyledItemDelegate;

  struct Row {
    QRect place;      // from edge to edge of the tree, with the caption
    int caption = 0;  // its height; 0 where there is none
    bool selected = false;
    bool over = false;
    bool open = false;
    bool focus = false;
    bool plus_over = false;
    bool plus_pressed = false;
  };

  static void draw(QPainter& painter, const QWidget& tree, const Row& row, const TreeNode& node);

  // Whether the row has the arrow of a room.
  static bool has_arrow(const QModelIndex& index);
  // Of the caption in the upper part of the row.
  static int caption_height(const QModelIndex& index, const QWidget& tree);
  static QRect plus_place(const QRect& caption);

  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace homewarden::view
