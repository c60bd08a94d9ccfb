#pragma once

#include <QTreeView>

#include "ui/controls.h"
#include "ui/qt/column_widths.h"
#include "ui/qt/list_model.h"

namespace homewarden::view {

// Shows a ListView and works it: selecting, opening with a double click or Enter, the menu with the
// right button or the menu key, asking for another order with a click on a caption. The row that is
// marked is always the control's selected one.
class ListPane : public QTreeView {
 public:
  // The name is what a screen reader says.
  ListPane(ListView& list, const QString& name, QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;

 private:
  void show_columns();
  void show_rows();
  void show_order();
  void select(int row);

  ListView& list_;
  ListModel* model_;
  ColumnWidths widths_;
};

}  // namespace homewarden::view
