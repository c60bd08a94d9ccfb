#pragma once

#include <QTreeView>
#include <vector>

#include "ui/controls.h"

namespace homewarden::view {

// Keeps the columns of a list as wide as the control asks for, and at least so wide that captions
// and typical texts can be read in the font of the desktop. When the list is narrower than its
// columns, those that have more than they need give some up before a scroll bar appears. Once a
// person has dragged a column, all of them stay as they are.
class ColumnWidths {
 public:
  // `view` shows `list` and its model lists the same rows.
  ColumnWidths(const ListView& list, QTreeView& view);

  // The columns are others: what a person dragged does not count for them.
  void reset();
  // The texts or the font have changed.
  void measure();
  // The list has become wider or narrower.
  void fit();

 private:
  struct Column {
    int wanted = 0;
    int needed = 0;
    int spare() const { return wanted - needed; }
  };
  int caption_width(int column) const;
  int widest_text(int column) const;
  int mark_width() const;

  const ListView& list_;
  QTreeView& view_;
  std::vector<Column> columns_;
  bool fitting_ = false;
  bool person_sized_ = false;
};

}  // namespace homewarden::view
