#pragma once

#include <QTreeView>
#include <set>
#include <string>

#include "ui/qt/tree_model.h"

namespace homewarden::view {

// The navigation tree: selecting and clicking are apart, as its control says. Rooms are closed
// until they are clicked.
class TreePane : public QTreeView {
 public:
  TreePane(TreeView& tree, QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;

 private:
  void nodes_changed();
  void selected_changed();
  void room_closed(const QModelIndex& room);
  void click(const QModelIndex& index);

  TreeView& tree_;
  TreeModel* model_;
  std::set<std::string> open_rooms_;  // by key: nodes are new after every change
  std::string pressed_;               // the key of the node on which the left button went down
};

}  // namespace homewarden::view
