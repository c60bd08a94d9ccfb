#include "ui/qt/tree_model.h"

#include "platform/qt/text_codec.h"

namespace homewarden::view {
namespace {

using Nodes = std::vector<std::unique_ptr<TreeNode>>;

// The same picture when selected: the desktop would tint it with the colour it lies on.
QIcon untinted(const char* file) {
  QIcon icon(file);
  icon.addFile(file, QSize(), QIcon::Selected);
  return icon;
}

}  // namespace

TreeModel::TreeModel(TreeView& tree, QObject* parent)
    : QAbstractItemModel(parent),
      tree_(tree),
      fixed_icons_{{"Home", untinted(":/icons/home.png")},
                   {"Events", untinted(":/icons/events.png")},
                   {"Macros", untinted(":/icons/macros.png")},
                   {"Web Server", untinted(":/icons/web.png")},
                   {"Profiles", untinted(":/icons/profiles.png")}},
      room_icon_(untinted(":/icons/room.png")),
      device_icon_(untinted(":/icons/device.png")) {
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
    case Qt::DecorationRole:
      return icon_of(node);
    case Qt::AccessibleTextRole:
      return qt::from_code_page(node.parent ? node.text + ", device in " + node.parent->text
                                            : node.text);
    default:
      return {};
  }
}

QIcon TreeModel::icon_of(const TreeNode& node) const {
  if (node.parent) return device_icon_;
  const auto fixed = fixed_icons_.find(node.key);
  return fixed == fixed_icons_.end() ? room_icon_ : fixed->second;
}

}  // namespace homewarden::view
