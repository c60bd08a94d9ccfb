#include "ui/qt/tree_model.h"

#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/page.h"

namespace homewarden::view {
namespace {

using Nodes = std::vector<std::unique_ptr<TreeNode>>;

constexpr int kFullyOn = 100;

QString spoken(const TreeNode& node) {
  const QString name = qt::from_code_page(node.text);
  if (!node.parent) {
    const int on = count_on(node);
    return on == 0 ? name : tr("%1, %2 on").arg(name).arg(on);
  }
  const QString room = qt::from_code_page(node.parent->text);
  const QString level = level_words(node);
  const QString state = level.isEmpty() ? tr("off") : level;
  return tr("%1, device in %2, %3").arg(name, room, state);
}

}  // namespace

int count_on(const TreeNode& room) {
  return static_cast<int>(std::count_if(room.children.begin(), room.children.end(),
                                        [](const auto& node) { return node->level > 0; }));
}

QString level_words(const TreeNode& node) {
  const int level = node.level.value_or(0);
  if (level == 0) return {};
  return level < kFullyOn ? tr("%1 %").arg(level) : tr("On");
}

TreeModel::TreeModel(TreeView& tree, QObject* parent) : QAbstractItemModel(parent), tree_(tree) {
  number_rows();
}

void TreeModel::reload() {
  beginResetModel();
  number_rows();
  endResetModel();
}

void TreeModel::number_rows() {
  rows_.clear();
  int row = 0;
  for (const auto& root : tree_.roots()) {
    rows_[root.get()] = row++;
    int child_row = 0;
    for (const auto& child : root->children) rows_[child.get()] = child_row++;
  }
}

TreeNode* TreeModel::node_of(const QModelIndex& index) {
  return static_cast<TreeNode*>(index.internalPointer());
}

QModelIndex TreeModel::index_of(const TreeNode* node) const {
  const auto found = rows_.find(node);
  if (found == rows_.end()) return {};
  return createIndex(found->second, 0, const_cast<TreeNode*>(node));
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const {
  const Nodes& nodes = parent.isValid() ? node_of(parent)->children : tree_.roots();
  if (column != 0 || row < 0 || row >= static_cast<int>(nodes.size())) return {};
  return createIndex(row, 0, nodes[static_cast<std::size_t>(row)].get());
}

QModelIndex TreeModel::parent(const QModelIndex& index) const {
  return index.isValid() ? index_of(node_of(index)->parent) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex& parent) const {
  const Nodes& nodes = parent.isValid() ? node_of(parent)->children : tree_.roots();
  return static_cast<int>(nodes.size());
}

int TreeModel::columnCount(const QModelIndex& /*parent*/) const {
  return 1;
}

QVariant TreeModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const TreeNode& node = *node_of(index);
  switch (role) {
    case Qt::DisplayRole:
      return qt::from_code_page(node.text);
    case Qt::AccessibleTextRole:
      return spoken(node);
    default:
      return {};
  }
}

void TreeModel::show_level(const TreeNode& node) {
  for (const TreeNode* shown = &node; shown; shown = shown->parent) {
    const QModelIndex index = index_of(shown);
    if (index.isValid()) emit dataChanged(index, index);
  }
}

}  // namespace homewarden::view
