#pragma once

#include <QList>
#include <QWidget>

namespace homewarden::view {

// Shows its cells in as many equal columns as there is room for, one at least.
class FlowGrid : public QWidget {
 public:
  // What becomes of the room when there are fewer cells than columns.
  enum class Fill { kKeep, kStretch };

  // A cell is at least `least_width` wide, in widths of the letter x; `gap` in pixels between
  // cells.
  FlowGrid(int least_width, Fill fill, int gap, QWidget* parent);

  // In this order from now on; cells that are not among them any more are to be deleted by the
  // caller.
  void set_cells(const QList<QWidget*>& cells);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void arrange();

  int least_width_;
  Fill fill_;
  int gap_;
  QList<QWidget*> cells_;
};

}  // namespace homewarden::view
