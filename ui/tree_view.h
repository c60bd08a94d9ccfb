#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "ui/controls.h"

namespace homewarden {

struct TreeNode {
  std::string key;
  std::string text;
  TreeNode* parent = nullptr;
  std::vector<std::unique_ptr<TreeNode>> children;
};

// A tree of nodes, each found by a key that no other node has.
struct TreeView : Control {
  // Raised after nodes were added or removed; a batch of changes raises it once.
  Signal<> nodes_changed;
  Property<TreeNode*> selected{nullptr};
  Property<bool> root_lines{false};
  Signal<> click;          // a node was clicked, or chosen with the keyboard; it is `selected`
  Signal<int> key_press;   // the character typed
  Signal<int> mouse_down;  // 1 left button, 2 right button

  // Adds a node behind its brothers. Null, and nothing is added, when the key is taken or the
  // parent's key (other than "" with `parent` null) names no node.
  TreeNode* add(TreeNode* parent, const std::string& key, const std::string& text);
  TreeNode* find(const std::string& key) const;
  // Removes the node with everything below it.
  void remove(TreeNode* node);
  const std::vector<std::unique_ptr<TreeNode>>& roots() const { return root_.children; }
  std::size_t size() const { return by_key_.size(); }

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
