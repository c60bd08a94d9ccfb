#pragma once

#include <QPersistentModelIndex>
#include <QTreeView>
#include <functional>
#include <string>

#include "ui/qt/tree_model.h"

namespace homewarden::view {

// The navigation tree: selecting and clicking are apart, as its control says. Rooms are closed
// until they are clicked.
class TreePane : public QTreeView {
 public:
  // `add_room` is what the sign beside the caption of the rooms does.
  TreePane(TreeView& tree, std::function<void()> add_room, QWidget* parent = nullptr);

  // Without the caption above the first room.
  QRect visualRect(const QModelIndex& index) const override;

 protected:
  void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
  void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;

 private:
  void nodes_changed();
  void show_open_rooms();
  void selected_changed();
  void room_closed(const QModelIndex& room);
  void click(const QModelIndex& index);
  QModelIndex node_at(const QPoint& place) const;
  QRect plus_place() const;
  void hover(const QPoint& place);

  TreeView& tree_;
  TreeModel* model_;
  std::function<void()> add_room_;
  QPersistentModelIndex hovered_;
  bool plus_hovered_ = false;
  bool plus_pressed_ = false;
  std::string pressed_;  // the key of the node on which the left button went down
};

}  // namespace homewarden::view
