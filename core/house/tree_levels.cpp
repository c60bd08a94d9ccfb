#include "core/house/tree_levels.h"

#include "base/text.h"

namespace homewarden {

TreeLevels::TreeLevels(TreeView& tree, const NavigationTree& navigation, DeviceState& state)
    : tree_(tree), navigation_(navigation), state_(state) {
  tree.nodes_changed.connect([this] { find_nodes(); });
  state.changed.connect([this](const StateChange& change) {
    const auto found = nodes_.find(to_lower(change.key));
    if (found == nodes_.end()) return;
    for (TreeNode* node : found->second) tree_.set_level(*node, level_of(change.key));
  });
  state.changed_elsewhere.connect([this] { show_all(); });
}

// Nothing is told: whoever shows the nodes shows them anew just now.
void TreeLevels::find_nodes() {
  nodes_.clear();
  for (const auto& room : tree_.roots())
    for (const auto& node : room->children)
      if (const Device* device = navigation_.device_of(*node)) {
        const std::string key = device->key();
        nodes_[to_lower(key)].push_back(node.get());
        node->level = level_of(key);
      }
}

void TreeLevels::show_all() {
  for (const auto& [key, nodes] : nodes_)
    for (TreeNode* node : nodes) tree_.set_level(*node, level_of(key));
}

int TreeLevels::level_of(const std::string& key) const {
  return state_.getlaststatus(key) ? state_.level(key) : 0;
}

}  // namespace homewarden
