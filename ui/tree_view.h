#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "ui/controls.h"

namespace homewarden {

struct TreeNode {
  std::string key;
  std::string text;
  // Of a device: percent, 0 when off. Nothing for what cannot be switched.
  std::optional<int> level;
  TreeNode* parent = nullptr;
  std::vector<std::unique_ptr<TreeNode>> children;
};

// A tree of nodes, each found by a key that no other node has.
//
// Selecting shows, clicking acts. A face sets `selected` whenever a person moves the selection:
// with the left or the right button, the arrow keys, Home, End or by typing the beginning of a
// text. It raises `click` only for a left click on a node, also on the one that is selected
// already, and for Enter or the space bar on the selected node. So whoever shows something of the
// selected node watches `selected`, and only who watches `click` may switch anything. The arrow
// that opens and closes a room neither selects nor clicks.
struct TreeView : Control {
  // Raised after nodes were added or removed; a batch of changes raises it once. A face then shows
  // the nodes anew, with the selection that is set by then, and with the rooms open that were.
  Signal<> nodes_changed;
  // Null: none, as after a right click beside all nodes. Logic may set it too; a face shows it.
  Property<TreeNode*> selected{nullptr};
  Property<bool> root_lines{false};
  // Keys of the rooms whose devices are shown. A face sets it, and shows what logic sets.
  Property<std::set<std::string>> open_rooms;
  Signal<> click;         // the selected node was clicked
  Signal<> rename_asked;  // another name for the selected node, with F2
  Signal<int> key_press;  // the character typed; it concerns the selected node, if there is one
  // 1: the left button went down. 2: a person asks for the menu of the selected node, with the
  // right button or the menu key; without a node under the pointer nobody is asked.
  Signal<int> mouse_down;

  // Adds a node behind its brothers. Null, and nothing is added, when the key is taken or the
  // parent's key (other than "" with `parent` null) names no node.
  TreeNode* add(TreeNode* parent, const std::string& key, const std::string& text);
  // Null when no node has exactly this key.
  TreeNode* find(const std::string& key) const;
  // Removes the node with everything below it; pointers to them are good no longer. When one of
  // them was selected, nothing is.
  void remove(TreeNode* node);
  // Tells it when it is another one, outside of a batch.
  void set_level(TreeNode& node, std::optional<int> level);
  Signal<const TreeNode&> level_changed;
  const std::vector<std::unique_ptr<TreeNode>>& roots() const { return root_.children; }
  std::size_t size() const { return by_key_.size(); }

  // Whether a batch of changes is under way: nodes that a face knows may be gone.
  bool is_changing() const { return batches_ > 0; }

  // While one of these lives, changes are not told; when the last goes they are told once.
  class Batch {
   public:
    explicit Batch(TreeView& tree) : tree_(tree) { ++tree_.batches_; }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;
    ~Batch();

   private:
    TreeView& tree_;
  };

 private:
  void changed();
  void forget_keys(const TreeNode& node);

  TreeNode root_;
  std::unordered_map<std::string, TreeNode*> by_key_;
  int batches_ = 0;
  bool changed_in_batch_ = false;
};

}  // namespace homewarden
