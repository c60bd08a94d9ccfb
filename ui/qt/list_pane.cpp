#include "ui/qt/list_pane.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>

#include "ui/key_codes.h"
#include "ui/qt/bindings.h"
#include "ui/qt/disabled_colours.h"
#include "ui/qt/watch.h"

namespace homewarden::view {

ListPane::ListPane(ListView& list, const QString& name, QWidget* parent)
    : QTreeView(parent), list_(list), model_(new ListModel(list, this)), widths_(list, *this) {
  setModel(model_);
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setAlternatingRowColors(true);
  setEditTriggers(NoEditTriggers);
  setStyleSheet("QTreeView::item { padding: 3px 2px; }");
  header()->setSectionsMovable(false);
  header()->setSectionsClickable(true);
  header()->setMinimumSectionSize(12);  // a letter without a caption
  keep_readable_when_disabled(this, QPalette::Window);
  keep_readable_when_disabled(header(), QPalette::Window);
  bind_common(list, this, name);
  follow(list.columns, this, [this](const auto&) { show_columns(); });
  follow(list.rows, this, [this](const auto&) { show_rows(); });
  follow(list.selected, this, [this](int row) { select(row); });
  watch(list.marks.changed, this, [this] {
    model_->show_marks();
    widths_.measure();
  });
  follow(list.sort_key, this, [this](int) {
    show_order();
    widths_.measure();
  });
  connect(header(), &QHeaderView::sectionClicked, this, [this](int section) {
    list_.column_click(section + 1);
    show_order();  // the click has turned the arrow around
  });
}

void ListPane::show_columns() {
  model_->reload();
  widths_.reset();
  select(list_.selected);
}

void ListPane::show_rows() {
  model_->reload();
  widths_.measure();
  select(list_.selected);
}

void ListPane::show_order() {
  header()->setSortIndicatorShown(list_.sort_key >= 0);
  header()->setSortIndicator(list_.sort_key, Qt::AscendingOrder);
}

void ListPane::select(int row) {
  if (row >= 0 && row == currentIndex().row()) return;
  setCurrentIndex(model_->index(row, 0));
}

void ListPane::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTreeView::currentChanged(current, previous);
  list_.selected = current.row();
}

// Also with Ctrl, which would take the mark from the row that is selected.
QItemSelectionModel::SelectionFlags ListPane::selectionCommand(const QModelIndex& index,
                                                               const QEvent* event) const {
  if (index.isValid()) return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
  return event ? QItemSelectionModel::NoUpdate : QItemSelectionModel::Clear;
}

void ListPane::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_D && event->modifiers() == Qt::ControlModifier) {
    list_.key_press(kControlD);
    return;
  }
  if (event->key() == Qt::Key_Delete) {
    list_.key_press(kDelete);
    return;
  }
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (currentIndex().isValid()) list_.double_click();
    return;
  }
  QTreeView::keyPressEvent(event);
}

void ListPane::mouseDoubleClickEvent(QMouseEvent* event) {
  QTreeView::mouseDoubleClickEvent(event);
  if (event->button() == Qt::LeftButton && indexAt(event->pos()).isValid()) list_.double_click();
}

void ListPane::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Mouse) {
    const QModelIndex index = indexAt(event->pos());
    if (index.isValid()) setCurrentIndex(index);
  } else if (currentIndex().isValid()) {
    scrollTo(currentIndex());  // the menu opens there
  }
  list_.mouse_down(kRightButton);
}

// Whoever comes with the keyboard starts at the first row; a window that only becomes active again
// selects nothing.
void ListPane::focusInEvent(QFocusEvent* event) {
  QTreeView::focusInEvent(event);
  const bool by_key = event->reason() == Qt::TabFocusReason ||
                      event->reason() == Qt::BacktabFocusReason ||
                      event->reason() == Qt::ShortcutFocusReason;
  if (by_key && !currentIndex().isValid()) select(0);
}

void ListPane::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  widths_.fit();
}

void ListPane::changeEvent(QEvent* event) {
  QTreeView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
    widths_.measure();
}

}  // namespace homewarden::view
