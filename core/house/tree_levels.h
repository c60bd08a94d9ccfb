#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "core/house/navigation_tree.h"
#include "ui/tree_view.h"
#include "x10/device_state.h"

namespace homewarden {

// Keeps at the nodes of the devices whether and how brightly they are on, whoever switched them.
class TreeLevels {
 public:
  TreeLevels(TreeView& tree, const NavigationTree& navigation, DeviceState& state);

 private:
  void find_nodes();
  void show_all();
  int level_of(const std::string& key) const;

  TreeView& tree_;
  const NavigationTree& navigation_;
  DeviceState& state_;
  // By the lower-case key of the device; a line that stands twice in the list has one node.
  std::unordered_map<std::string, std::vector<TreeNode*>> nodes_;
};

}  // namespace homewarden
