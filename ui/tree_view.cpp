#include "ui/tree_view.h"

#include <algorithm>

namespace homewarden {

TreeNode* TreeView::add(TreeNode* parent, const std::string& key, const std::string& text) {
  const auto [entry, is_new] = by_key_.try_emplace(key, nullptr);
  if (!is_new) return nullptr;
  auto& brothers = parent ? parent->children : root_.children;
  auto node = std::make_unique<TreeNode>();
  node->key = key;
  node->text = text;
  node->parent = parent;
  entry->second = node.get();
  brothers.push_back(std::move(node));
  changed();
  return brothers.back().get();
}

TreeNode* TreeView::find(const std::string& key) const {
  const auto entry = by_key_.find(key);
  return entry == by_key_.end() ? nullptr : entry->second;
}

void TreeView::remove(TreeNode* node) {
  for (const TreeNode* chosen = selected; chosen; chosen = chosen->parent) {
    if (chosen != node) continue;
    selected = nullptr;
    break;
  }
  forget_keys(*node);
  auto& brothers = node->parent ? node->parent->children : root_.children;
  std::erase_if(brothers, [node](const auto& brother) { return brother.get() == node; });
  changed();
}

void TreeView::set_level(TreeNode& node, std::optional<int> level) {
  if (node.level == level) return;
  node.level = level;
  if (!is_changing()) level_changed(node);
}

void TreeView::forget_keys(const TreeNode& node) {
  for (const auto& child : node.children) forget_keys(*child);
  by_key_.erase(node.key);
}

void TreeView::changed() {
  if (batches_ > 0)
    changed_in_batch_ = true;
  else
    nodes_changed();
}

TreeView::Batch::~Batch() {
  if (--tree_.batches_ > 0 || !tree_.changed_in_batch_) return;
  tree_.changed_in_batch_ = false;
  tree_.nodes_changed();
}

}  // namespace homewarden
