#pragma once

#include <QAbstractItemModel>
#include <unordered_map>

#include "ui/tree_view.h"

namespace homewarden::view {

// What devices below a room are on.
int count_on(const TreeNode& room);

// "On", "40 %"; empty for a device that is off and for what is none.
QString level_words(const TreeNode& node);

// Shows the nodes of a TreeView to Qt without copying them.
class TreeModel : public QAbstractItemModel {
 public:
  explicit TreeModel(TreeView& tree, QObject* parent = nullptr);

  QModelIndex index_of(const TreeNode* node) const;
  static TreeNode* node_of(const QModelIndex& index);

  QModelIndex index(int row, int column, const QModelIndex& parent) const override;
  QModelIndex parent(const QModelIndex& index) const override;
  int rowCount(const QModelIndex& parent) const override;
  int columnCount(const QModelIndex& parent) const override;
  QVariant data(const QModelIndex& index, int role) const override;

  // The nodes have changed; everything is shown anew.
  void reload();
  // A device was switched.
  void show_level(const TreeNode& node);

 private:
  void number_rows();

  TreeView& tree_;
  std::unordered_map<const TreeNode*, int> rows_;  // a node does not know its place
};

}  // namespace homewarden::view
