#include "ui/qt/flow_grid.h"

#include <QEvent>
#include <algorithm>

namespace homewarden::view {

FlowGrid::FlowGrid(int least_width, Fill fill, int gap, QWidget* parent)
    : QWidget(parent), least_width_(least_width), fill_(fill), gap_(gap) {}

void FlowGrid::set_cells(const QList<QWidget*>& cells) {
  cells_ = cells;
  QWidget* before = nullptr;
  for (QWidget* cell : cells_) {
    if (before) setTabOrder(before, cell);
    before = cell;
    cell->show();
  }
  arrange();
}

void FlowGrid::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  arrange();
}

bool FlowGrid::event(QEvent* event) {
  const bool done = QWidget::event(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::LayoutRequest) arrange();
  return done;
}

void FlowGrid::arrange() {
  const int least = least_width_ * fontMetrics().averageCharWidth();
  int columns = std::max(1, (width() + gap_) / (least + gap_));
  if (fill_ == Fill::kStretch)
    columns = std::clamp(columns, 1, std::max(1, static_cast<int>(cells_.size())));
  const int cell_width = (width() - (columns - 1) * gap_) / columns;
  int height = 0;
  for (QWidget* cell : cells_)
    height = std::max(height, cell->hasHeightForWidth() ? cell->heightForWidth(cell_width)
                                                        : cell->sizeHint().height());
  int place = 0;
  for (QWidget* cell : cells_) {
    cell->setGeometry((place % columns) * (cell_width + gap_), (place / columns) * (height + gap_),
                      cell_width, height);
    ++place;
  }
  const int rows = (place + columns - 1) / columns;
  setFixedHeight(std::max(0, rows * (height + gap_) - gap_));
}

}  // namespace homewarden::view
