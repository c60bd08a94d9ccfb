#include "ui/qt/column_widths.h"

#include <QHeaderView>
#include <QScopedValueRollback>
#include <algorithm>

namespace homewarden::view {
namespace {

constexpr int kTwipsPerPixel = 15;

// Rows that are looked at, spread over the list: measuring all of a long one would be felt.
constexpr int kSample = 100;

}  // namespace

ColumnWidths::ColumnWidths(const ListView& list, QTreeView& view) : list_(list), view_(view) {
  QObject::connect(view.header(), &QHeaderView::sectionResized, &view, [this](int section) {
    // The last one fills the rest, whoever changes the others.
    const bool last = section + 1 == static_cast<int>(columns_.size());
    if (!fitting_ && !last) person_sized_ = true;
  });
}

void ColumnWidths::reset() {
  person_sized_ = false;
  measure();
}

int ColumnWidths::widest_text(int column) const {
  const QAbstractItemModel& model = *view_.model();
  const QFontMetrics metrics = view_.fontMetrics();
  const int step = std::max(1, model.rowCount() / kSample);
  int widest = 0;
  QModelIndex found;
  for (int row = 0; row < model.rowCount(); row += step) {
    const QModelIndex index = model.index(row, column);
    const int width = metrics.horizontalAdvance(index.data().toString());
    if (width <= widest) continue;
    widest = width;
    found = index;
  }
  if (!found.isValid()) return 0;
  // With the margins that the style puts around it; every row of the first column may be marked.
  const int text = view_.sizeHintForIndex(found).width();
  return column == 0 && !list_.marks.get().empty() ? text + mark_width() : text;
}

int ColumnWidths::mark_width() const {
  const QStyle& style = *view_.style();
  const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &view_) + 1;
  return style.pixelMetric(QStyle::PM_SmallIconSize, nullptr, &view_) + 2 * margin;
}

// The arrow takes room only where it is shown.
int ColumnWidths::caption_width(int column) const {
  const QHeaderView& header = *view_.header();
  const int margin = header.style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, &header);
  const QString caption = header.model()->headerData(column, Qt::Horizontal).toString();
  const int text = header.fontMetrics().horizontalAdvance(caption) + 2 * margin + 2;
  const bool arrow = column == list_.sort_key;
  const int mark = header.style()->pixelMetric(QStyle::PM_HeaderMarkSize, nullptr, &header);
  return arrow ? text + mark + 2 * margin : text;
}

void ColumnWidths::measure() {
  columns_.clear();
  for (const ListColumn& column : list_.columns.get()) {
    const int section = static_cast<int>(columns_.size());
    const int needed = std::max(caption_width(section), widest_text(section));
    columns_.push_back({std::max(column.width / kTwipsPerPixel, needed), needed});
  }
  fit();
}

void ColumnWidths::fit() {
  if (person_sized_) return;
  const QScopedValueRollback<bool> fitting(fitting_, true);
  int over = -view_.viewport()->width();
  int spare = 0;
  for (const Column& column : columns_) {
    over += column.wanted;
    spare += column.spare();
  }
  over = std::clamp(over, 0, spare);
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const int given = spare == 0 ? 0 : (columns_[i].spare() * over + spare - 1) / spare;
    view_.header()->resizeSection(static_cast<int>(i), columns_[i].wanted - given);
  }
}

}  // namespace homewarden::view
