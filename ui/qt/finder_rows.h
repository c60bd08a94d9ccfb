#pragma once

#include <QStyledItemDelegate>

#include "ui/finder_panel.h"

namespace homewarden::view {

// How the entries of the finder look: a heading above the first of each group, a picture or a sign,
// two lines.
class FinderRows : public QStyledItemDelegate {
 public:
  FinderRows(FinderPanel& panel, QWidget* list);

  // What a screen reader says of one.
  static QString spoken(const Found& found);

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  const Found* found_at(const QModelIndex& index) const;
  bool has_heading(const QModelIndex& index) const;

  FinderPanel& panel_;
};

}  // namespace homewarden::view
