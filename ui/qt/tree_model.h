#pragma once

#include <QAbstractItemModel>
#include <QIcon>
#include <map>
#include <string>

#include "ui/tree_view.h"

namespace homewarden::view {

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

 private:
  QIcon icon_of(const TreeNode& node) const;
  void number_rows();

  TreeView& tree_;
  std::map<std::string, QIcon> fixed_icons_;
  QIcon room_icon_;
  QIcon device_icon_;
  std::unordered_map<const TreeNode*, int> rows_;  // a node does not know its place
};

}  // namespace homewarden::view
