#pragma once

#include "core/settings.h"
#include "ui/tree_view.h"

namespace homewarden {

// What the tree showed when the program ended last: the rooms that were open, and the panel or room
// that was looked at. What is no more is passed over; without anything stored nothing changes. To
// be called when the tree is built.
void restore_view(TreeView& tree, Settings& settings);
void save_view(const TreeView& tree, Settings& settings);

}  // namespace homewarden
