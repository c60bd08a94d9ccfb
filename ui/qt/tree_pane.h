#pragma once

#include <QTreeView>
#include <set>
#include <string>

#include "ui/qt/tree_model.h"

namespace homewarden {

// The navigation tree. Rooms are closed until they are pressed. A click, Enter or the space bar
// presses a node; moving with the arrow keys presses top-level nodes only, since pressing a device
// switches it.
class TreePane : public QTreeView {
 public:
  TreePane(TreeView& tree, QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  void nodes_changed();
  void select(const QModelIndex& index);
  void press(const QModelIndex& index);

  TreeView& tree_;
  TreeModel* model_;
  std::set<std::string> open_rooms_;  // by key: nodes are new after every change
  bool keyboard_ = false;             // the selection is being moved with the keyboard
  QModelIndex pressed_;               // where the mouse button went down
};

}  // namespace homewarden
